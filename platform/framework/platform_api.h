// SPDX-License-Identifier: MIT
/// @file
/// Marks the classes and functions that the platform library exports. On POSIX it also exports
/// those of windows.h and shellapi.h.
#pragma once

/// @cond
#if !defined(_WIN32)
#define EXIFKEEP_PLATFORM_API __attribute__((visibility("default")))
#elif defined(EXIFKEEP_PLATFORM_BUILD)
#define EXIFKEEP_PLATFORM_API __declspec(dllexport)
#else
#define EXIFKEEP_PLATFORM_API  // not needed to import functions
#endif
/// @endcond

/// @file
/// What the platform library shows to hosts: the classes and functions marked here, and on POSIX
/// systems those of windows.h and shellapi.h. All else in it is hidden.
#pragma once

/// @cond
#if !defined(_WIN32)
#define EXIFKEEP_PLATFORM_API __attribute__((visibility("default")))
#elif defined(EXIFKEEP_PLATFORM_BUILD)
#define EXIFKEEP_PLATFORM_API __declspec(dllexport)
#else
#define EXIFKEEP_PLATFORM_API  // to import functions takes no word
#endif
/// @endcond

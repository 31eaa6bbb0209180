// SPDX-License-Identifier: MIT
/// @file
/// The version of exifkeep; CMake reads it from this file. A host can compare the version it was
/// compiled with and the version that is loaded at run time.
///
///     #if EXIFKEEP_VERSION_NUMBER < 10000
///     if (exifkeep::runningVersion() < EXIFKEEP_VERSION_NUMBER) warnOfAnOlderLibrary();
#pragma once

#include <platform_api.h>

#define EXIFKEEP_VERSION_MAJOR 0  ///< The SOVERSION of both libraries.
#define EXIFKEEP_VERSION_MINOR 1  ///< Raised when something is added.
#define EXIFKEEP_VERSION_PATCH 0  ///< Raised when the interface does not change.
/// The version as a number for comparisons: 10203 for 1.2.3.
#define EXIFKEEP_VERSION_NUMBER \
  (EXIFKEEP_VERSION_MAJOR * 10000 + EXIFKEEP_VERSION_MINOR * 100 + EXIFKEEP_VERSION_PATCH)
/// @cond
#define EXIFKEEP_QUOTED_AS_IT_IS(text) #text
#define EXIFKEEP_QUOTED(text) EXIFKEEP_QUOTED_AS_IT_IS(text)
/// @endcond
/// The version as a text, such as "1.2.3".
#define EXIFKEEP_VERSION                  \
  EXIFKEEP_QUOTED(EXIFKEEP_VERSION_MAJOR) \
  "." EXIFKEEP_QUOTED(EXIFKEEP_VERSION_MINOR) "." EXIFKEEP_QUOTED(EXIFKEEP_VERSION_PATCH)

namespace exifkeep {

/// The EXIFKEEP_VERSION_NUMBER of the loaded libraries.
EXIFKEEP_PLATFORM_API int runningVersion() noexcept;

}  // namespace exifkeep

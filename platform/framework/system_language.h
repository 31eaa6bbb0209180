// SPDX-License-Identifier: MIT
// The language settings of thread and system.
#pragma once

#include <windows.h>

#include <string>

namespace exifkeep {

// The language that the host chose for this thread, or 0. On Windows always 0: a choice cannot be
// distinguished from the user's setting, and systemLanguage returns either.
LANGID threadLanguage();

// The system's setting as a BCP 47 tag, or empty if there is none. Implemented in platform/posix
// and platform/windows. May throw std::bad_alloc.
std::string systemLanguage();

}  // namespace exifkeep

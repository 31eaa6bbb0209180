// SPDX-License-Identifier: MIT
// Translates errno to Windows error codes, and keeps the last one of each thread.
#pragma once

#include <windows.h>

namespace exifkeep {

// The Windows code of an errno value; ERROR_GEN_FAILURE for those that callers do not distinguish.
DWORD errorOf(int error);

// Sets the last error from errno. Returns FALSE, so that a call can return the result.
BOOL failed();

}  // namespace exifkeep

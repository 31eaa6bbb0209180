// SPDX-License-Identifier: MIT
// The message box used if the host has not installed a handler.
#pragma once

#include <windows.h>

namespace exifkeep {

// Shows the text and returns the button pressed. `owner` may be null. Implemented in platform/posix
// and platform/windows.
int showSystemMessage(HWND owner, const char* text, UINT type);

}  // namespace exifkeep

// What a message box is where the host has not installed a handler.
#pragma once

#include <windows.h>

namespace exifkeep {

// Shows the text and answers with the button pressed. `owner` may be null. Made of the system's own
// calls, in platform/posix and platform/windows.
int showSystemMessage(HWND owner, const char* text, UINT type) noexcept;

}  // namespace exifkeep

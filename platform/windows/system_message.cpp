// SPDX-License-Identifier: MIT
// A message box of the system, titled with the program's name.
#include "system_message.h"

#include <string_view>

namespace exifkeep {

int showSystemMessage(HWND owner, const char* text, UINT type) {
  char path[MAX_PATH];
  const std::string_view program(path, GetModuleFileNameA(nullptr, path, sizeof path - 1));
  path[program.size()] = '\0';
  return MessageBoxA(owner, text, path + program.find_last_of('\\') + 1, type);
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// One line on standard error. The answer is always OK.
#include "system_message.h"

#include <cstdio>

namespace exifkeep {

int showSystemMessage(HWND, const char* text, UINT) {
  std::fprintf(stderr, "%s\n", text);
  return IDOK;
}

}  // namespace exifkeep

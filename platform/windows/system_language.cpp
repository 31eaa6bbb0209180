// SPDX-License-Identifier: MIT
// The language of the thread's user interface: the host's choice, else the user's.
#include "system_language.h"

#include <windows.h>

namespace exifkeep {

LANGID threadLanguage() {
  return 0;
}

std::string systemLanguage() {
  const LCID locale = MAKELCID(GetThreadUILanguage(), SORT_DEFAULT);
  wchar_t name[LOCALE_NAME_MAX_LENGTH];
  const int length = LCIDToLocaleName(locale, name, LOCALE_NAME_MAX_LENGTH, 0);
  // Locale names are ASCII. The length includes the NUL.
  return length > 0 ? std::string(name, name + length - 1) : std::string();
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
#include <windows.h>

#include "system_language.h"

namespace {

thread_local LANGID chosenLanguage = 0;

}  // namespace

LANGID SetThreadUILanguage(LANGID language) {
  return chosenLanguage = language;
}

LANGID GetThreadUILanguage() {
  return chosenLanguage;
}

// SPDX-License-Identifier: MIT
#include <cstdlib>

#include "locale_name.h"

namespace exifkeep {

namespace {

std::string_view valueOf(const char* variable) {
  const char* value = std::getenv(variable);
  return value ? value : std::string_view();
}

}  // namespace

LocaleVariables::LocaleVariables()
    : all(valueOf("LC_ALL")),
      messages(valueOf("LC_MESSAGES")),
      ctype(valueOf("LC_CTYPE")),
      lang(valueOf("LANG")),
      language(valueOf("LANGUAGE")) {}

}  // namespace exifkeep

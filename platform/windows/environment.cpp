// SPDX-License-Identifier: MIT
#include "locale_name.h"

#include <cstdlib>

namespace exifkeep {

std::string_view firstSet(std::initializer_list<const char*> variables) {
  for (const char* variable : variables) {
    const char* value = std::getenv(variable);
    if (value && *value != '\0') return value;
  }
  return {};
}

}  // namespace exifkeep

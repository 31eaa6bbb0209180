// SPDX-License-Identifier: MIT
// A single pass over the environment for all names, because every call that shows texts does this;
// getenv would need one for each name.
#include "locale_name.h"

#include <unistd.h>

#include <cstring>

namespace exifkeep {

std::string_view firstSet(std::initializer_list<const char*> variables) {
  const char* found = "";
  const char* const* end = variables.end();  // only names before this one are still searched
  for (char** entry = environ; entry && *entry; ++entry) {
    if ((*entry)[0] != 'L' || ((*entry)[1] != 'C' && (*entry)[1] != 'A')) continue;
    for (const char* const* variable = variables.begin(); variable != end; ++variable) {
      const size_t length = std::strlen(*variable);
      const char* value = *entry + length + 1;
      if (std::strncmp(*entry, *variable, length) != 0 || value[-1] != '=' || *value == '\0')
        continue;
      found = value;
      end = variable;
      break;
    }
  }
  return found;
}

}  // namespace exifkeep

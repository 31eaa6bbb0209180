// SPDX-License-Identifier: MIT
// A single pass over the environment for all variables, because every call that shows texts does
// this; getenv would need one for each.
#include <unistd.h>

#include "locale_name.h"

namespace exifkeep {

LocaleVariables::LocaleVariables() {
  struct Variable {
    std::string_view name;
    std::string_view& value;
  };
  const Variable variables[] = {{"LC_ALL=", all},
                                {"LC_MESSAGES=", messages},
                                {"LC_CTYPE=", ctype},
                                {"LANG=", lang},
                                {"LANGUAGE=", language}};
  for (char** entry = environ; entry && *entry; ++entry) {
    if ((*entry)[0] != 'L' || ((*entry)[1] != 'C' && (*entry)[1] != 'A')) continue;
    const std::string_view text = *entry;
    for (const auto& [name, value] : variables)
      if (value.empty() && text.starts_with(name)) value = text.substr(name.size());
  }
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
#include <code_page.h>
#include <language.h>
#include <module_strings.h>

#include <string>

#include "locale_name.h"

namespace exifkeep {

ModuleStrings::ModuleStrings() = default;
ModuleStrings::~ModuleStrings() = default;

void ModuleStrings::take(const AfxStringTable& table) {
  const LocaleVariables variables;
  encoder_ = CodePageEncoder::forCharset(userCharset(variables));
  const LANGID language = userLanguage(variables);
  for (const AfxStringVariant& variant : table.variants)
    if (variant.language == language) texts_ = variant.texts;
}

CString ModuleStrings::encoded(std::string_view text) const {
  std::string bytes;
  encoder_->encode(text, bytes);
  return bytes.c_str();
}

}  // namespace exifkeep

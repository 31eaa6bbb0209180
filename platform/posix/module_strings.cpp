// SPDX-License-Identifier: MIT
#include <code_page.h>
#include <language.h>
#include <module_strings.h>

namespace exifkeep {

ModuleStrings::ModuleStrings() = default;
ModuleStrings::~ModuleStrings() = default;

void ModuleStrings::take(const AfxStringTable& table) {
  encoder_ = CodePageEncoder::forUser();
  const LANGID language = userLanguage();
  for (const AfxStringVariant& variant : table.variants)
    if (variant.language == language) texts_ = variant.texts;
}

}  // namespace exifkeep

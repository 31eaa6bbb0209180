// The sheet's own words, those that do not come from the library, in every language.
#pragma once

#include <string_view>

namespace program {

struct SheetWords {
  std::string_view tag;  // BCP 47, one of languageVariants()
  std::string_view title;
  std::string_view language;
  std::string_view noExif;
  std::string_view notOpened;
};

// REQUIRES: `tag` is that of a language variant.
const SheetWords& sheetWords(std::string_view tag);

}  // namespace program

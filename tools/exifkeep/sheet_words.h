// What the sheet has of its own: words that do not come from the library, in every language, and
// style and script, which the build takes from sheet.css and sheet.js.
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

extern const char* const sheetStyle;
extern const char* const sheetScript;

}  // namespace program

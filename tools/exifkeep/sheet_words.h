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
  std::string_view damaged;
};

// REQUIRES: `tag` is that of a language variant.
const SheetWords& sheetWords(std::string_view tag);

struct SheetAsset {
  std::string_view text;
  std::string_view sha256;  // of the text, as bytes
};

extern const SheetAsset sheetStyle;
extern const SheetAsset sheetScript;

}  // namespace program

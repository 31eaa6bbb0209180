// SPDX-License-Identifier: MIT
// The page's own words in every language, and its style and script, which are compiled from
// sheet.css and sheet.js.
#pragma once

#include <string_view>

namespace program {

struct SheetWords {
  std::string_view tag;  // the BCP 47 tag of one of languageVariants()
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

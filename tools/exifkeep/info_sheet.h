// The metadata of pictures as one HTML page that needs nothing beside it: pictures, style and
// script are inside, and so are the texts of all languages, one of which is shown at a time.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "picture_preview.h"

namespace program {

// A text in each language, in the order of languageVariants().
using LanguageTexts = std::vector<std::string>;

struct SheetRow {
  LanguageTexts label, value;
};

struct SheetPicture {
  std::string path;
  PicturePreview preview;
  std::vector<SheetRow> rows;
  // Stands in for the rows of a file without any.
  enum class Kind { exif, notExif, notOpened } kind = Kind::exif;
};

// A row's value in English by its label in English; empty when there is none.
std::string_view englishValue(const SheetPicture& picture, std::string_view englishLabel);

// The page's parts, in their order; `language` is the tag of the one that is shown first.
std::string beginSheet(std::string_view title, std::string_view language);
std::string sheetSection(const SheetPicture& picture);
std::string endSheet();

}  // namespace program

// SPDX-License-Identifier: MIT
// Makes an HTML page of the metadata of pictures, which includes pictures, style and script. The
// markup has the texts of the initial language. Texts that depend on the language are also included
// once per language as data at the end of the page, with numbers by which the script finds them.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "picture_preview.h"

namespace program {

// A text in each language, in the order of languageVariants().
using LanguageTexts = std::vector<std::string>;

struct SheetRow {
  std::string tagName;
  LanguageTexts label, value;
};

struct SheetPicture {
  std::string path;
  PicturePreview preview;
  std::vector<SheetRow> rows;
  // For files without rows.
  enum class Kind { exif, notExif, notOpened } kind = Kind::exif;
};

// Makes the parts of the page. REQUIRES: the functions are called in the order of the page.
class InfoSheet {
 public:
  // The page first shows `language`. REQUIRES: the tag of a language variant.
  explicit InfoSheet(std::string_view language);

  // `name` is that of a single file, or empty.
  std::string begin(const std::string& name);
  std::string section(const SheetPicture& picture);
  std::string end() const;

 private:
  std::string localized(const std::string& element, const LanguageTexts& texts,
                        const std::string& attributes = "");
  std::string valueHtml(const std::string& element, const LanguageTexts& values, bool unitApart);
  std::string languageSwitch();
  std::string leadHtml(const SheetPicture& picture);
  std::string factsHtml(const SheetPicture& picture);
  std::string remarksHtml(const SheetPicture& picture);
  std::string tableHtml(const SheetPicture& picture);

  std::string_view language_;
  size_t languageIndex_;
  std::map<LanguageTexts, size_t> numbers_;
  std::vector<const LanguageTexts*> texts_;  // keys of numbers_, by their numbers
};

}  // namespace program

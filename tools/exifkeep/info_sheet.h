// The metadata of pictures as one HTML page that needs nothing beside it: pictures, style and
// script are inside. The markup has the texts of the language shown first. Texts that differ from
// language to language are in the page once for each language, as data at its end, and have numbers
// by which the script finds them.
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
  // Stands in for the rows of a file without any.
  enum class Kind { exif, notExif, notOpened } kind = Kind::exif;
};

// Makes the page's parts, to be asked for in the order of these functions.
class InfoSheet {
 public:
  // REQUIRES: `language` is the tag of a language variant. It is the one that is shown first.
  explicit InfoSheet(std::string_view language);

  // `name` is that of the only file, or empty.
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

// SPDX-License-Identifier: MIT
// LANGUAGE is ignored in the C locale. LC_ALL=C.UTF-8 is another locale and also selects the code
// page.
#include "language_selection.h"

#include <language.h>

#include "system.h"

namespace program {
namespace {

std::string_view tagOf(LANGID language) {
  for (const exifkeep::LanguageVariant& variant : exifkeep::languageVariants())
    if (variant.language == language) return variant.tag;
  return "en";
}

}  // namespace

void selectLanguage(std::string_view tag) {
  const LANGID language = tag.empty() ? exifkeep::userLanguage() : exifkeep::matchLanguage(tag);
  setEnvironment("LANGUAGE", std::string(tagOf(language)));
  setEnvironment("LC_ALL", "C.UTF-8");
}

std::string_view selectedLanguage() {
  return tagOf(exifkeep::userLanguage());
}

bool isLanguage(std::string_view tag) {
  return exifkeep::matchLanguage(tag) != 0;
}

std::string languageTags() {
  std::string tags;
  for (const exifkeep::LanguageVariant& variant : exifkeep::languageVariants()) {
    if (!tags.empty()) tags += ", ";
    tags += variant.tag;
  }
  return tags;
}

}  // namespace program

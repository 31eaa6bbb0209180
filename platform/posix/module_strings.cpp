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

bool ModuleStrings::load(UINT id, std::string_view& text, std::string& encoded) const {
  if (id >= texts_.size() || texts_[id].empty()) return false;
  if (encoder_)
    encoder_->encode(texts_[id], encoded);
  else
    text = texts_[id];
  return true;
}

}  // namespace exifkeep

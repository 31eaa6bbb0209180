// The chain of module state switches of each thread, and looking up a text in the innermost one: an
// index into the table of the language that was found when the switch's first text was loaded.
#include <afx.h>
#include <afxstat_.h>
#include <code_page.h>
#include <language.h>

namespace {

thread_local AFX_MAINTAIN_STATE2* innermost = nullptr;

}  // namespace

AFX_MAINTAIN_STATE2::AFX_MAINTAIN_STATE2(const AFX_MODULE_STATE* module) noexcept
    : module_(module), previous_(innermost) {
  innermost = this;
}

AFX_MAINTAIN_STATE2::~AFX_MAINTAIN_STATE2() {
  innermost = previous_;
}

void AFX_MAINTAIN_STATE2::takeLanguage() {
  encoder_ = exifkeep::CodePageEncoder::forUser();
  const LANGID language = exifkeep::userLanguage();
  if (module_ != nullptr && module_->strings() != nullptr) {
    for (const AfxStringVariant& variant : module_->strings()->variants) {
      if (variant.language == language) texts_ = variant.texts;
    }
  }
  languageTaken_ = true;
}

bool AFX_MAINTAIN_STATE2::loadText(UINT id, std::string_view& text, std::string& encoded) {
  if (!languageTaken_) takeLanguage();
  if (id >= texts_.size() || texts_[id].empty()) return false;
  if (encoder_ != nullptr)
    encoder_->encode(texts_[id], encoded);
  else
    text = texts_[id];
  return true;
}

BOOL CString::LoadString(UINT id) {
  text_.clear();
  loaded_ = {};
  return innermost != nullptr && innermost->loadText(id, loaded_, text_);
}

// SPDX-License-Identifier: MIT
// A module's texts, from a table compiled into it.
#pragma once

#include <afx.h>
#include <code_page.h>
#include <platform_api.h>
#include <windows.h>

#include <memory>
#include <span>
#include <string_view>

// One language of a module's string table: texts[id] in UTF-8, each followed by a NUL, or empty if
// there is no such text.
struct AfxStringVariant {
  LANGID language;
  std::span<const std::string_view> texts;
};

struct AfxStringTable {
  std::span<const AfxStringVariant> variants;
};

namespace exifkeep {

// The texts of a table in one language, converted to the user's code page.
class EXIFKEEP_PLATFORM_API ModuleStrings {
 public:
  ModuleStrings();
  ~ModuleStrings();

  // Selects this table's texts in the user's language and code page. May throw std::bad_alloc.
  void take(const AfxStringTable& table);
  // See AFX_MAINTAIN_STATE2::loadText.
  bool load(UINT id, CString& text) const {
    if (id >= texts_.size() || texts_[id].empty()) return false;
    if (encoder_)
      text = encoded(texts_[id]);
    else
      text.refer(texts_[id]);
    return true;
  }

 private:
  CString encoded(std::string_view text) const;

  std::span<const std::string_view> texts_;
  // Null if the code page is UTF-8.
  std::unique_ptr<CodePageEncoder> encoder_;
};

}  // namespace exifkeep

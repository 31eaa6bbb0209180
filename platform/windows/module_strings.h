// SPDX-License-Identifier: MIT
// A module's texts, from the string resources of its file.
#pragma once

#include <afx.h>
#include <platform_api.h>
#include <windows.h>

// The module that has the string table.
struct AfxStringTable {
  HMODULE module;
};

namespace exifkeep {

// The texts of a module in one language, converted to the process's code page.
class EXIFKEEP_PLATFORM_API ModuleStrings {
 public:
  // Selects this table's texts in the user's language. May throw std::bad_alloc.
  void take(const AfxStringTable& table);
  // See AFX_MAINTAIN_STATE2::loadText.
  bool load(UINT id, CString& text) const;

 private:
  HMODULE module_ = nullptr;
  LANGID language_ = 0;
};

}  // namespace exifkeep

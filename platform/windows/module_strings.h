// Where a module's texts come from: the string resources of its file.
#pragma once

#include <platform_api.h>
#include <windows.h>

#include <string>
#include <string_view>

// The string table of a module, by the address that it is loaded at.
struct AfxStringTable {
  HMODULE module;
};

namespace exifkeep {

// The texts of one module in one language, on their way into the process's code page.
class EXIFKEEP_PLATFORM_API ModuleStrings {
 public:
  // Chooses the texts of this table, in the user's language. May throw std::bad_alloc.
  void take(const AfxStringTable& table);
  // As AFX_MAINTAIN_STATE2::loadText.
  bool load(UINT id, std::string_view& text, std::string& encoded) const;

 private:
  HMODULE module_ = nullptr;
  LANGID language_ = 0;
};

}  // namespace exifkeep

// Where a module's texts come from: a table that is compiled into the module.
#pragma once

#include <code_page.h>
#include <platform_api.h>
#include <windows.h>

#include <memory>
#include <span>
#include <string>
#include <string_view>

// One language of a module's string table: texts[id] in UTF-8, each followed by a NUL; empty where
// an id has no text.
struct AfxStringVariant {
  LANGID language;
  std::span<const std::string_view> texts;
};

struct AfxStringTable {
  std::span<const AfxStringVariant> variants;
};

namespace exifkeep {

// The texts of one table in one language, on their way into the user's code page.
class EXIFKEEP_PLATFORM_API ModuleStrings {
 public:
  ModuleStrings() noexcept;
  ~ModuleStrings();

  // Chooses the texts of this table, in the user's language and code page. May throw
  // std::bad_alloc.
  void take(const AfxStringTable& table);
  // As AFX_MAINTAIN_STATE2::loadText.
  bool load(UINT id, std::string_view& text, std::string& encoded) const;

 private:
  std::span<const std::string_view> texts_;
  // Null while texts leave as they are, in UTF-8.
  std::unique_ptr<CodePageEncoder> encoder_;
};

}  // namespace exifkeep

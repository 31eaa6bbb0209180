// SPDX-License-Identifier: MIT
// Looks texts up directly in the resources of one language, because LoadStringW falls back to
// another language if a text is missing.
#include <language.h>
#include <module_strings.h>

#include <string>
#include <string_view>

namespace exifkeep {
namespace {

// The UTF-16 text with this id, or empty. A resource has sixteen strings, each preceded by its
// length.
std::wstring_view findString(HMODULE module, LANGID language, UINT id) {
  const auto block = static_cast<WORD>(id / 16 + 1);
  const HRSRC place =
      FindResourceExW(module, MAKEINTRESOURCEW(6), MAKEINTRESOURCEW(block), language);
  const HGLOBAL resource = place ? LoadResource(module, place) : nullptr;
  if (!resource) return {};
  const auto* units = static_cast<const wchar_t*>(LockResource(resource));
  for (UINT i = 0; i < id % 16; ++i) units += 1 + *units;
  return {units + 1, *units};
}

std::string inCodePage(std::wstring_view wide) {
  // No code page needs more than four bytes per unit.
  std::string text(4 * wide.size(), '\0');
  const bool isUtf8 = GetACP() == CP_UTF8;
  const int bytes = WideCharToMultiByte(
      CP_ACP, isUtf8 ? 0 : WC_NO_BEST_FIT_CHARS, wide.data(), static_cast<int>(wide.size()),
      text.data(), static_cast<int>(text.size()), isUtf8 ? nullptr : "?", nullptr);
  text.resize(static_cast<size_t>(bytes));
  return text;
}

}  // namespace

void ModuleStrings::take(const AfxStringTable& table) {
  module_ = table.module;
  language_ = userLanguage();
}

bool ModuleStrings::load(UINT id, CString& text) const {
  // Ids have 16 bits. A null module would mean the program's own file.
  if (!module_ || id > 0xFFFF) return false;
  const std::wstring_view found = findString(module_, language_, id);
  if (found.empty()) return false;
  text = inCodePage(found).c_str();
  return true;
}

}  // namespace exifkeep

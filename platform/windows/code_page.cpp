// SPDX-License-Identifier: MIT
// The code page is that of the process (CP_ACP). Texts are converted through UTF-16.
#include <code_page.h>
#include <windows.h>

namespace exifkeep {

std::unique_ptr<CodePageEncoder> CodePageEncoder::forUser() {
  if (GetACP() == CP_UTF8) return nullptr;
  return std::unique_ptr<CodePageEncoder>(new CodePageEncoder(nullptr));
}

CodePageEncoder::~CodePageEncoder() = default;

void CodePageEncoder::encode(std::string_view utf8, std::string& text) {
  const int size = static_cast<int>(utf8.size());
  // UTF-16 has at most as many units as UTF-8 has bytes, and no code page needs more than 4 bytes
  // per unit.
  std::wstring wide(utf8.size(), L'\0');
  const int units = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), size);
  text.resize(4 * utf8.size());
  const int bytes = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), units,
                                        text.data(), static_cast<int>(text.size()), "?", nullptr);
  text.resize(static_cast<size_t>(bytes));
}

}  // namespace exifkeep

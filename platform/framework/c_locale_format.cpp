// SPDX-License-Identifier: MIT
// Most texts fit into the buffer; others are printed twice.
#include "c_locale_format.h"

#include <algorithm>

namespace exifkeep {
std::string formatInCLocale(const char* format, va_list arguments) {
  char buffer[256];
  va_list again;
  va_copy(again, arguments);
  const int length = printInCLocale(buffer, sizeof buffer, format, arguments);
  std::string text;
  if (length < static_cast<int>(sizeof buffer)) {
    text.assign(buffer, static_cast<size_t>(std::max(length, 0)));
  } else {
    text.resize(static_cast<size_t>(length));
    printInCLocale(text.data(), text.size() + 1, format, again);
  }
  va_end(again);
  return text;
}

}  // namespace exifkeep

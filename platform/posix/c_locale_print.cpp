// SPDX-License-Identifier: MIT
// Switches the thread to the "C" locale while printing. uselocale only swaps a pointer and does not
// change the process locale.
#include <locale.h>

#include <cstdio>

#include "c_locale_format.h"

namespace exifkeep {

int printInCLocale(char* target, size_t size, const char* format, va_list arguments) {
  static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
  const locale_t threadLocale = uselocale(cLocale);
  const int length = std::vsnprintf(target, size, format, arguments);
  uselocale(threadLocale);
  return length;
}

}  // namespace exifkeep

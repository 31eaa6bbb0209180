// The thread is in the "C" locale while a text is printed; uselocale swaps a pointer, and the
// process locale is not touched.
#include <c_locale_format.h>
#include <locale.h>

#include <cstdio>

namespace exifkeep {

int printInCLocale(char* target, size_t size, const char* format, va_list arguments) {
  static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
  const locale_t threadLocale = uselocale(cLocale);
  const int length = std::vsnprintf(target, size, format, arguments);
  uselocale(threadLocale);
  return length;
}

}  // namespace exifkeep

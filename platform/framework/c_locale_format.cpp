// The thread is in the "C" locale while a text is formatted, so that decimal points are "." and the
// bytes of any code page pass "%s". The process locale is not touched. Relies on per-thread locales
// (POSIX uselocale, which swaps a pointer) or on a printf that takes its locale (Windows).
#include <c_locale_format.h>
#include <locale.h>

#include <algorithm>
#include <cstdio>

namespace exifkeep {
namespace {

// As vsnprintf: the text's whole length, also when `size` is too small for it.
#if defined(_WIN32)

int printInCLocale(char* target, std::size_t size, const char* format, va_list arguments) {
  static const _locale_t cLocale = _create_locale(LC_ALL, "C");
  va_list again;
  va_copy(again, arguments);
  const int length = _vscprintf_l(format, cLocale, again);
  va_end(again);
  _vsnprintf_l(target, size, format, cLocale, arguments);
  return length;
}

#else

int printInCLocale(char* target, std::size_t size, const char* format, va_list arguments) {
  static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
  const locale_t threadLocale = uselocale(cLocale);
  const int length = std::vsnprintf(target, size, format, arguments);
  uselocale(threadLocale);
  return length;
}

#endif

}  // namespace

std::string formatInCLocale(const char* format, va_list arguments) {
  char buffer[256];
  va_list again;
  va_copy(again, arguments);
  const int length = printInCLocale(buffer, sizeof buffer, format, arguments);
  std::string text;
  if (length < static_cast<int>(sizeof buffer)) {
    text.assign(buffer, static_cast<std::size_t>(std::max(length, 0)));
  } else {
    text.resize(static_cast<std::size_t>(length));
    printInCLocale(text.data(), text.size() + 1, format, again);
  }
  va_end(again);
  return text;
}

}  // namespace exifkeep

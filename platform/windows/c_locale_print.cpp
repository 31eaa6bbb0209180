// SPDX-License-Identifier: MIT
// Uses the C++ runtime's printf, which rounds correctly. The system's own _vsnprintf_l takes a
// locale but does not round correctly in every version. So the thread is switched to the "C" locale
// while printing, unless its decimal point is "." anyway.
#include <locale.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "c_locale_format.h"

namespace exifkeep {
namespace {

class ThreadInCLocale {
 public:
  ThreadInCLocale() {
    if (std::strcmp(localeconv()->decimal_point, ".") == 0) return;
    numbers_ = setlocale(LC_NUMERIC, nullptr);
    scope_ = _configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
    setlocale(LC_NUMERIC, "C");
  }
  ~ThreadInCLocale() {
    if (numbers_.empty()) return;
    setlocale(LC_NUMERIC, numbers_.c_str());
    _configthreadlocale(scope_);
  }
  ThreadInCLocale(const ThreadInCLocale&) = delete;
  ThreadInCLocale& operator=(const ThreadInCLocale&) = delete;

 private:
  std::string numbers_;  // the locale to restore; empty if it was not changed
  int scope_ = 0;
};

}  // namespace

int printInCLocale(char* target, size_t size, const char* format, va_list arguments) {
  const ThreadInCLocale locale;
  return std::vsnprintf(target, size, format, arguments);
}

}  // namespace exifkeep

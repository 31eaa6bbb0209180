// SPDX-License-Identifier: MIT
// POSIX locale names, language[_territory][.charset][@modifier], and ASCII letters, independent of
// the process locale.
#pragma once

#include <windows.h>

#include <algorithm>
#include <string_view>

namespace exifkeep {

// The environment variables for locales, of POSIX and GNU gettext; empty if not set. Valid until
// the environment changes.
struct LocaleVariables {
  LocaleVariables();
  // The locale of the category with this variable.
  std::string_view localeOf(std::string_view category) const {
    if (!all.empty()) return all;
    return category.empty() ? lang : category;
  }

  std::string_view all, messages, ctype, lang;  // LC_ALL, LC_MESSAGES, LC_CTYPE, LANG
  std::string_view language;                    // LANGUAGE: a list, separated by ":"
};

// userLanguage() for variables that have been read already.
LANGID userLanguage(const LocaleVariables& variables);

// The part before charset and modifier, and the charset; empty if the name has none.
std::string_view languageOf(std::string_view localeName);
std::string_view charsetOf(std::string_view localeName);
inline std::string_view userCharset(const LocaleVariables& variables) {
  return charsetOf(variables.localeOf(variables.ctype));
}

// Converts an ASCII letter to lower case; other characters are unchanged.
constexpr char lowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

bool isAsciiLetterOrDigit(char letter);
inline bool isSameIgnoringCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return lowerCase(a) == lowerCase(b); });
}

}  // namespace exifkeep

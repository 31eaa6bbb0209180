// SPDX-License-Identifier: MIT
// POSIX locale names, language[_territory][.charset][@modifier], and ASCII letters, independent of
// the process locale.
#pragma once

#include <initializer_list>
#include <string_view>

namespace exifkeep {

// The value of the first of these environment variables that is set and not empty, or else empty.
// Valid until the environment changes. REQUIRES: names that begin with LA or LC.
std::string_view firstSet(std::initializer_list<const char*> variables);

// The part before charset and modifier, and the charset; empty if the name has none.
std::string_view languageOf(std::string_view localeName);
std::string_view charsetOf(std::string_view localeName);

// Converts an ASCII letter to lower case; other characters are unchanged.
constexpr char lowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

bool isAsciiLetterOrDigit(char letter);
bool isSameIgnoringCase(std::string_view left, std::string_view right);

}  // namespace exifkeep

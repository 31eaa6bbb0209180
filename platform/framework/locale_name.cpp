// SPDX-License-Identifier: MIT
#include "locale_name.h"

namespace exifkeep {

std::string_view languageOf(std::string_view localeName) {
  return localeName.substr(0, localeName.find_first_of(".@"));
}

std::string_view charsetOf(std::string_view localeName) {
  localeName = localeName.substr(0, localeName.find('@'));
  const size_t dot = localeName.find('.');
  return dot == localeName.npos ? std::string_view() : localeName.substr(dot + 1);
}

bool isAsciiLetterOrDigit(char letter) {
  letter = lowerCase(letter);
  return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9');
}

}  // namespace exifkeep

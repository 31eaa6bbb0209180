// SPDX-License-Identifier: MIT
// Numbers are formatted with std::to_chars because it ignores the locale and because printf took
// longer for the twenty or so numbers of a list than reading the file.
#include "info/value_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <string>

namespace exifkeep {

namespace {

CString textOf(std::string_view text) {
  return CString(text.data(), static_cast<int>(text.size()));
}

CString joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text += part;
  return textOf(text);
}

// Returns the end of the text. REQUIRES: room for 11 characters at `to`.
char* writeNumber(char* to, uint32_t value) {
  return std::to_chars(to, to + 11, static_cast<int32_t>(value)).ptr;
}

// As stored, but without a denominator of 1. Returns the end of the text. REQUIRES: room for
// `maxRationalLength` characters at `to`.
constexpr size_t maxRationalLength = 2 * 11 + 1;
char* writeRational(char* to, Rational value) {
  to = writeNumber(to, value.numerator);
  if (value.denominator == 1) return to;
  *to++ = '/';
  return writeNumber(to, value.denominator);
}

// Rounds the exact binary value to one decimal, ties to even, like C's printf. Done here because
// the exact algorithm of to_chars takes five times as long, and a picture has about six such
// values. Returns the end of the text. REQUIRES: a quotient of 32-bit numbers, room for 13
// characters at `to`.
char* writeOneDecimal(char* to, double quotient) {
  const double magnitude = std::abs(quotient), tenfold = magnitude * 10;
  double tenths = std::nearbyint(tenfold);
  // If the product looks like a tie, the rounding error of the multiplication shows which side the
  // exact value is on.
  if (std::abs(tenfold - tenths) == 0.5) {
    const double lost = std::fma(magnitude, 10, -tenfold);
    if (lost != 0) tenths = std::floor(tenfold) + (lost > 0);
  }
  if (std::signbit(quotient)) *to++ = '-';
  const auto digits = static_cast<uint64_t>(tenths);
  to = std::to_chars(to, to + 10, digits / 10).ptr;
  *to++ = '.';
  *to++ = static_cast<char>('0' + digits % 10);
  return to;
}

}  // namespace

CString dateTimeText(std::string_view stored) {
  constexpr size_t dateLength = 10;
  char text[maxDateTimeLength];
  std::ranges::copy(stored, text);
  std::replace(text, text + std::min(stored.size(), dateLength), ':', '/');
  return textOf({text, stored.size()});
}

CString versionText(const char* digits) {
  const bool hasOneMajorDigit = digits[0] == '0';
  char text[] = {digits[0], digits[1], '.', digits[2], digits[3], '\0'};
  // A zero byte among the four ends the text there.
  return CString(text + (hasOneMajorDigit ? 1 : 0));
}

CString exifVersionText(const char* digits, bool isR98) {
  CString text = versionText(digits);
  if (isR98) text += wordText(word::r98);
  return text;
}

CString wholeRationalText(Rational value) {
  char text[maxRationalLength];
  return textOf({text, writeRational(text, value)});
}

CString exposureTimeText(Rational value) {
  char text[maxRationalLength];
  const char* end = writeRational(text, value);
  return joined({{text, end}, " (", wordText(word::seconds), ")"});
}

CString decimalText(double numerator, double denominator, std::string_view unit) {
  char text[13 + maxUnitLength];
  char* end = writeOneDecimal(text, numerator / denominator);
  return textOf({text, std::ranges::copy(unit, end).out});
}

CString focalLengthText(Rational value) {
  // Rounded to single precision first. Intended: 545/100 has always been shown as 5.4.
  const float quotient =
      static_cast<float>(static_cast<double>(value.numerator) / value.denominator);
  char text[13];
  const char* end = writeOneDecimal(text, double{quotient});
  return joined({{text, end}, " ", wordText(word::millimetres)});
}

CString numberText(uint32_t value) {
  char text[12];
  return textOf({text, writeNumber(text, value)});
}

CString bytesText(const void* bytes, size_t count) {
  if (!bytes) return {};
  const auto text = static_cast<const char*>(bytes);
  return textOf({text, strnlen(text, std::min(count, maxBytesShown))});
}

CString componentsText(const char* components) {
  static constexpr std::string_view known[] = {"", "Y", "Cb", "Cr", "R", "G", "B"};
  const auto lettersOf = [](char component) {
    const auto index = static_cast<uint8_t>(component);
    return index < std::size(known) ? known[index] : std::string_view();
  };
  char buffer[4 * 2];
  char* end = buffer;
  for (int i = 0; i < 4; ++i) end = std::ranges::copy(lettersOf(components[i]), end).out;
  const std::string_view letters(buffer, end);
  if (!lettersOf(components[0]).empty()) return textOf(letters);
  // Without a known first component, the letters of the others follow the text for "does not
  // exist". Intended: it shows that the file's list is odd.
  return joined({wordText(word::doesNotExist), letters});
}

}  // namespace exifkeep

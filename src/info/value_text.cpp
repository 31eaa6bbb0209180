// SPDX-License-Identifier: MIT
// Numbers are formatted with std::to_chars because it ignores the locale and because printf took
// longer for the twenty or so numbers of a list than reading the file.
#include "info/value_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>

namespace exifkeep {

namespace {

CString textOf(std::string_view text) {
  return CString(text.data(), static_cast<int>(text.size()));
}

char* writeText(char* to, std::string_view text) {
  return std::ranges::copy(text, to).out;
}

// Returns the end of the text. REQUIRES: room for `maxNumberLength` characters at `to`.
constexpr size_t maxNumberLength = 11;
char* writeNumber(char* to, uint32_t value) {
  return std::to_chars(to, to + maxNumberLength, static_cast<int32_t>(value)).ptr;
}

// As stored, but without a denominator of 1. Returns the end of the text. REQUIRES: room for
// `maxRationalLength` characters at `to`.
constexpr size_t maxRationalLength = 2 * maxNumberLength + 1;
char* writeRational(char* to, Rational value) {
  to = writeNumber(to, value.numerator);
  if (value.denominator == 1) return to;
  *to++ = '/';
  return writeNumber(to, value.denominator);
}

// Rounds the exact binary value to one decimal, ties to even, like C's printf. Done here because
// the exact algorithm of to_chars takes five times as long, and a picture has about six such
// values. Returns the end of the text. REQUIRES: a quotient of 32-bit numbers, room for
// `maxDecimalLength` characters at `to`.
constexpr size_t maxDecimalLength = 13;
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

constexpr size_t maxVersionLength = 5;
char* writeVersion(char* to, const char* digits) {
  const bool hasOneMajorDigit = digits[0] == '0';
  const char text[] = {digits[0], digits[1], '.', digits[2], digits[3], '\0'};
  // A zero byte among the four ends the text there.
  return writeText(to, text + (hasOneMajorDigit ? 1 : 0));
}

}  // namespace

CString dateTimeText(std::string_view stored) {
  constexpr size_t dateLength = 10;
  return CString::written(stored.size(), [&](char* to) {
    char* end = writeText(to, stored);
    std::replace(to, to + std::min(stored.size(), dateLength), ':', '/');
    return end;
  });
}

CString versionText(const char* digits) {
  return CString::written(maxVersionLength, [&](char* to) { return writeVersion(to, digits); });
}

CString exifVersionText(const char* digits, bool isR98) {
  const CString rules = isR98 ? wordText(word::r98) : CString();
  return CString::written(maxVersionLength + rules.size(),
                          [&](char* to) { return writeText(writeVersion(to, digits), rules); });
}

CString wholeRationalText(Rational value) {
  return CString::written(maxRationalLength, [&](char* to) { return writeRational(to, value); });
}

CString exposureTimeText(Rational value) {
  char buffer[maxRationalLength];
  const std::string_view number(buffer, writeRational(buffer, value));
  const CString unit = wordText(word::seconds);
  return CString::written(number.size() + 3 + unit.size(), [&](char* to) {
    to = writeText(writeText(to, number), " (");
    return writeText(writeText(to, unit), ")");
  });
}

CString decimalText(double numerator, double denominator, std::string_view unit) {
  return CString::written(maxDecimalLength + unit.size(), [&](char* to) {
    return writeText(writeOneDecimal(to, numerator / denominator), unit);
  });
}

CString focalLengthText(Rational value) {
  // Rounded to single precision first. Intended: 545/100 has always been shown as 5.4.
  const float quotient =
      static_cast<float>(static_cast<double>(value.numerator) / value.denominator);
  const CString unit = wordText(word::millimetres);
  return CString::written(maxDecimalLength + 1 + unit.size(), [&](char* to) {
    return writeText(writeText(writeOneDecimal(to, double{quotient}), " "), unit);
  });
}

CString numberText(uint32_t value) {
  return CString::written(maxNumberLength, [&](char* to) { return writeNumber(to, value); });
}

CString bytesText(const void* bytes, size_t count) {
  if (!bytes) return {};
  const auto text = static_cast<const char*>(bytes);
  return textOf({text, strnlen(text, std::min(count, maxBytesShown))});
}

CString componentsText(const char* components) {
  static constexpr std::string_view known[] = {"", "Y", "Cb", "Cr", "R", "G", "B"};
  constexpr size_t maxLength = 4 * 2;
  const auto lettersOf = [](char component) {
    const auto index = static_cast<uint8_t>(component);
    return index < std::size(known) ? known[index] : std::string_view();
  };
  // Without a known first component, the letters of the others follow the text for "does not
  // exist". Intended: it shows that the file's list is odd.
  const CString start = lettersOf(components[0]).empty() ? wordText(word::doesNotExist) : CString();
  return CString::written(start.size() + maxLength, [&](char* to) {
    to = writeText(to, start);
    for (int i = 0; i < 4; ++i) to = writeText(to, lettersOf(components[i]));
    return to;
  });
}

}  // namespace exifkeep

// Numbers are written by std::to_chars: it knows no locale, and a list has some twenty of them, for
// which printf took longer than reading the file.
#include "info/value_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace exifkeep {

namespace {

CString textOf(std::string_view text) {
  return CString(text.data(), static_cast<int>(text.size()));
}

// One decimal of the exact binary value; ties go to the even digit, as C's printf has it. Rounded
// here because the exact algorithm of to_chars takes five times as long, six times a picture.
// REQUIRES: a quotient of 32-bit numbers.
CString oneDecimalText(double quotient) {
  const double magnitude = std::abs(quotient), tenfold = magnitude * 10;
  double tenths = std::nearbyint(tenfold);
  // Of a product that looks like a tie, the part that its own rounding lost says which side it is.
  if (std::abs(tenfold - tenths) == 0.5) {
    const double lost = std::fma(magnitude, 10, -tenfold);
    if (lost != 0) tenths = std::floor(tenfold) + (lost > 0);
  }
  char text[16] = "-";
  const auto digits = static_cast<int64_t>(tenths);
  char* end = std::to_chars(text + 1, std::end(text), digits / 10).ptr;
  *end++ = '.';
  *end++ = static_cast<char>('0' + digits % 10);
  return textOf({text + (std::signbit(quotient) ? 0 : 1), end});
}

}  // namespace

CString wordText(UINT id) {
  CString text;
  text.LoadString(id);
  return text;
}

CString dateTimeText(std::string_view stored) {
  constexpr size_t dateLength = 10;
  CString text = textOf(stored);
  for (size_t i = 0; i < std::min(stored.size(), dateLength); ++i)
    if (stored[i] == ':') text.SetAt(static_cast<int>(i), '/');
  return text;
}

CString versionText(const char* digits) {
  const bool hasOneMajorDigit = digits[0] == '0';
  char text[] = {digits[0], digits[1], '.', digits[2], digits[3], '\0'};
  // A zero byte among the four ends the text there.
  return CString(text + (hasOneMajorDigit ? 1 : 0));
}

CString wholeRationalText(Rational value) {
  CString text = numberText(value.numerator);
  if (value.denominator == 1) return text;
  text += '/';
  text += numberText(value.denominator);
  return text;
}

CString exposureTimeText(Rational value) {
  CString text = wholeRationalText(value);
  text += " (";
  text += wordText(word::seconds);
  text += ')';
  return text;
}

CString decimalText(double numerator, double denominator, const char* unit) {
  CString text = oneDecimalText(numerator / denominator);
  text += unit;
  return text;
}

CString focalLengthText(Rational value) {
  // The quotient passes through single precision: intended, 545/100 has always shown as 5.4.
  const float quotient =
      static_cast<float>(static_cast<double>(value.numerator) / value.denominator);
  CString text = oneDecimalText(double{quotient});
  text += ' ';
  text += wordText(word::millimetres);
  return text;
}

CString numberText(uint32_t value) {
  char text[12];
  return textOf({text, std::to_chars(text, std::end(text), static_cast<int32_t>(value)).ptr});
}

CString bytesText(const uint8_t* bytes, uint32_t count) {
  if (!bytes) return {};
  const int length = static_cast<int>(std::min(count, mostBytesShown));
  return CString(reinterpret_cast<const char*>(bytes), length);
}

CString componentsText(const char* components) {
  static constexpr const char* letters[] = {"", "Y", "Cb", "Cr", "R", "G", "B"};
  const auto lettersOf = [](char component) {
    const auto index = static_cast<uint8_t>(component);
    return index < std::size(letters) ? letters[index] : "";
  };
  // Only the first component takes the place of the text for none; without it the others follow
  // that text. Intended: it shows that the file's list is odd.
  CString text =
      *lettersOf(components[0]) ? CString(lettersOf(components[0])) : wordText(word::doesNotExist);
  for (int i = 1; i < 4; ++i) text += lettersOf(components[i]);
  return text;
}

}  // namespace exifkeep

#include "info/value_text.h"

#include <algorithm>
#include <cstring>

namespace exifkeep {

namespace {

CString textOf(std::string_view text) {
  return CString(text.data(), static_cast<int>(text.size()));
}

}  // namespace

CString wordText(UINT id) {
  CString text;
  text.LoadString(id);
  return text;
}

CString dateTimeText(std::string_view stored) {
  constexpr size_t dateLength = 10;
  CString date = textOf(stored.substr(0, dateLength));
  date.Replace(':', '/');
  if (stored.size() > dateLength) date += textOf(stored.substr(dateLength));
  return date;
}

CString versionText(const char* digits) {
  const bool hasOneMajorDigit = digits[0] == '0';
  char text[] = {digits[0], digits[1], '.', digits[2], digits[3], '\0'};
  // A zero byte among the four ends the text there.
  return CString(text + (hasOneMajorDigit ? 1 : 0));
}

CString wholeRationalText(Rational value) {
  if (value.denominator == 1) return numberText(value.numerator);
  CString text;
  text.Format("%d/%d", static_cast<int32_t>(value.numerator),
              static_cast<int32_t>(value.denominator));
  return text;
}

CString exposureTimeText(Rational value) {
  CString text;
  text.Format("%s (%s)", static_cast<LPCSTR>(wholeRationalText(value)),
              static_cast<LPCSTR>(wordText(word::seconds)));
  return text;
}

CString decimalText(double numerator, double denominator, const char* format) {
  CString text;
  text.Format(format, numerator / denominator);
  return text;
}

CString focalLengthText(Rational value) {
  // The quotient passes through single precision: intended, 545/100 has always shown as 5.4.
  const float quotient =
      static_cast<float>(static_cast<double>(value.numerator) / value.denominator);
  CString text;
  text.Format("%.1f %s", double{quotient}, static_cast<LPCSTR>(wordText(word::millimetres)));
  return text;
}

CString numberText(uint32_t value) {
  CString text;
  text.Format("%d", static_cast<int32_t>(value));
  return text;
}

CString bytesText(const uint8_t* bytes, uint32_t count) {
  if (!bytes) return {};
  const int length = static_cast<int>(std::min<uint32_t>(count, 255));
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

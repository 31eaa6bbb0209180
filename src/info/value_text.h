// SPDX-License-Identifier: MIT
// Values as display text. Numbers have a "." in every language; words come from the string table.
#pragma once

#include <afxwin.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "info/words.h"
#include "read/records.h"

namespace exifkeep {

// The text of `id` in the user's language, or empty if there is none. `state` is the thread's, or
// null; a list looks it up once.
inline CString wordText(AFX_MAINTAIN_STATE2* state, UINT id) {
  CString text;
  if (state) state->loadText(id, text);
  return text;
}
inline CString wordText(UINT id) {
  return wordText(AFX_MAINTAIN_STATE2::current(), id);
}

// "2002:05:14 10:20:30" becomes 2002/05/14 10:20:30: only the first ten characters are changed.
CString dateTimeText(std::string_view stored);

// "0220" becomes 2.20, "1000" becomes 10.00. REQUIRES: four characters.
CString versionText(const char* digits);

// The same, followed by "(R98)" for files that follow those interoperability rules.
CString exifVersionText(const char* digits, bool isR98);

// 72/1 becomes 72; anything else is shown as stored, including 72/0.
CString wholeRationalText(Rational value);

// 1/60 (seconds), 2 (seconds), and also 10/0 (seconds).
CString exposureTimeText(Rational value);

// The quotient with one decimal, followed by the unit. REQUIRES: a denominator that is not 0.
CString decimalText(double numerator, double denominator, std::string_view unit);

// 5.4 (mm). REQUIRES: a denominator that is not 0.
CString focalLengthText(Rational value);

// Values of 2^31 and more are shown as the negative number with the same 32 bits.
CString numberText(uint32_t value);

// At most `maxBytesShown` bytes up to a zero byte; empty for null.
inline constexpr size_t maxBytesShown = 255;
CString bytesText(const void* bytes, size_t count);

// 1 2 3 0 becomes YCbCr. REQUIRES: four bytes.
CString componentsText(const char* components);

}  // namespace exifkeep

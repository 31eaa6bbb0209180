// Values as display text. Each function sees one value and nothing else; numbers keep "." in every
// language, words come from the string table.
#pragma once

#include <afxwin.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "info/words.h"
#include "read/records.h"

namespace exifkeep {

// The text of `id` in the user's language; empty when there is none.
CString wordText(UINT id);

// "2002:05:14 10:20:30" as 2002/05/14 10:20:30: only the first ten characters are a date.
CString dateTimeText(CString stored);

// "0220" as 2.20, "1000" as 10.00. REQUIRES: four characters.
CString versionText(const char* digits);

// 72/1 as 72, anything else as it is stored, 72/0 too: resolutions are shown, not computed.
CString wholeRationalText(Rational value);

// 1/60 (seconds), 2 (seconds); 10/0 too.
CString exposureTimeText(Rational value);

// The quotient with one decimal and the unit behind it. REQUIRES: a denominator that is not 0.
inline constexpr size_t longestUnit = 10;
CString decimalText(double numerator, double denominator, std::string_view unit);

// 5.4 (mm). REQUIRES: a denominator that is not 0.
CString focalLengthText(Rational value);

// Values of 2^31 and more show as the negative number of the same 32 bits.
CString numberText(uint32_t value);

// At most `mostBytesShown` bytes up to a zero byte; empty for null.
inline constexpr size_t mostBytesShown = 255;
CString bytesText(const void* bytes, size_t count);

// 1 2 3 0 as YCbCr. REQUIRES: four bytes.
CString componentsText(const char* components);

}  // namespace exifkeep

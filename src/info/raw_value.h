// A listed field as the file has it, for lists that ask for it.
#pragma once

#include <exifkeep/field_list.h>

#include <cstddef>
#include <memory>

#include "info/display_rows.h"

namespace exifkeep {

// Fills everything of `field` but its texts from the row's field in `record`, and returns what its
// views point to.
std::unique_ptr<std::byte[]> describeField(const DisplayRow& row, const void* record,
                                           InfoField& field);

// The value in the text of ValueRule::plain: numbers and fractions with blanks between, text, or
// bytes after their character code of 8 bytes (Exif 2.2, 4.6.6).
CString plainText(const InfoField& field);

}  // namespace exifkeep

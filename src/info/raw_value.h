// SPDX-License-Identifier: MIT
// Listed fields as stored in the file, for lists that ask for them.
#pragma once

#include <exifkeep/field_list.h>

#include <cstddef>
#include <memory>
#include <span>

#include "info/display_rows.h"

namespace exifkeep {

// Fills all members of `field` except its texts from the row's field in `record`. Its views point
// to `space`, whose alignment is that of int64_t, or to the memory returned if that is too small.
std::unique_ptr<std::byte[]> describeField(const DisplayRow& row, const void* record,
                                           InfoField& field, std::span<std::byte> space);

// The value as text, for ValueRule::plain: numbers and fractions separated by spaces, text, or the
// bytes after a character code of 8 bytes (Exif 2.2, 4.6.6).
CString plainText(const InfoField& field);

}  // namespace exifkeep

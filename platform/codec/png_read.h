// SPDX-License-Identifier: MIT
// Reads PNG files: opaque 1-bit grey as 1 bit, other grey and palette as 8, the rest as 24.
// Transparent pixels are blended with white, 16-bit levels are rounded to 8.
#pragma once

#include "picture_format.h"

namespace exifkeep {

bool isPng(const BYTE* start, size_t count);
bool describePng(PictureReading& file, PictureDescription& picture);
bool decodePng(PictureReading& file, const PictureRows& rows);

}  // namespace exifkeep

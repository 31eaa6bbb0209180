// SPDX-License-Identifier: MIT
// Reads TIFF files (TIFF 6.0 and BigTIFF, in either byte order; see tiff_budget.cpp for
// compressions).
#pragma once

#include "picture_format.h"

namespace exifkeep {

bool isTiff(const BYTE* start, size_t count);
// The picture is that of the file's first directory. Pictures in strips are decoded as 1 bit if
// they have 1-bit grey levels, as 8 if grey or palette; everything else, and all tiled pictures,
// as 24.
bool describeTiff(PictureReading& file, PictureDescription& picture);
bool decodeTiff(PictureReading& file, const PictureRows& rows);

}  // namespace exifkeep

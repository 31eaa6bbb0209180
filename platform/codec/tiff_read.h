// Reading TIFF files (TIFF 6.0, any byte order, BigTIFF, every compression the TIFF library knows).
#pragma once

#include "picture_format.h"

namespace exifkeep {

bool isTiff(const BYTE* start, size_t count);
// The picture is the file's first directory. Strips of bilevel pixels come as 1 bit, grey and
// palette as 8; everything else, and whatever is tiled, as 24.
bool describeTiff(PictureReading& file, PictureDescription& picture);
bool decodeTiff(PictureReading& file, const PictureRows& rows);

}  // namespace exifkeep

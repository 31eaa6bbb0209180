// Reading JPEG files (ITU-T T.81) of 8 bits a sample: grey as 8 bits, colour and CMYK as 24.
#pragma once

#include "picture_format.h"

namespace exifkeep {

bool isJpeg(const BYTE* start, size_t count);
bool describeJpeg(PictureReading& file, PictureDescription& picture);
// A picture whose only scan is complete is accepted without its EOI marker.
bool decodeJpeg(PictureReading& file, const PictureRows& rows);

}  // namespace exifkeep

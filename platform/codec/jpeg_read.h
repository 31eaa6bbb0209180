// SPDX-License-Identifier: MIT
// Reads JPEG files (ITU-T T.81) with 8 bits per sample: grey as 8 bits, colour and CMYK as 24.
#pragma once

#include "picture_format.h"

namespace exifkeep {

bool isJpeg(const BYTE* start, size_t count);
bool describeJpeg(PictureReading& file, PictureDescription& picture);
// A picture whose only scan is complete does not need an EOI marker.
bool decodeJpeg(PictureReading& file, const PictureRows& rows);

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// Saves a picture without metadata or as a JPEG file with an Exif segment after SOI. All functions
// return false, with the destination unchanged, if the picture is missing or empty or anything
// fails.
#pragma once

#include <praster.h>

#include "probe/exif_reader.h"
#include "read/records.h"

namespace exifkeep {

// As a JPEG file with the segment built from the records.
bool saveJpegWithRecords(ExifReader& reader, const char* destination, PRaster* picture,
                         PRaster* thumbnail, const ExifMetadata& metadata);

// As a JPEG file with a segment of default fields, the fields set in `exif`, and Software from
// `primary`.
bool saveJpegWithNewExif(ExifReader& reader, const char* destination, PRaster* picture,
                         PRaster* thumbnail, const ExifIfdRecord& exif,
                         const ImageIfdRecord& primary);

// Without metadata, in the format that the extension names.
bool savePlain(ExifReader& reader, const char* destination, PRaster* picture);

}  // namespace exifkeep

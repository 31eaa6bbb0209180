// Saving a picture through the codec, plain or with an Exif segment behind SOI. Each puts the whole
// file together in the temporary folder and in memory before it touches the destination. False when
// the picture is missing or empty or anything fails: the destination is then what it was.
#pragma once

#include <praster.h>

#include "probe/exif_reader.h"
#include "read/records.h"

namespace exifkeep {

// As a JPEG file with the segment built from the records.
bool saveJpegWithRecords(ExifReader& reader, const char* destination, PRaster* picture,
                         PRaster* thumbnail, const ExifMetadata& metadata);

// As a JPEG file with a segment of default fields, what is set in `exif`, and the Software of
// `primary`.
bool saveJpegWithNewExif(ExifReader& reader, const char* destination, PRaster* picture,
                         PRaster* thumbnail, const ExifIfdRecord& exif,
                         const ImageIfdRecord& primary);

// Without metadata, in the format that the extension names.
bool savePlain(ExifReader& reader, const char* destination, PRaster* picture);

}  // namespace exifkeep

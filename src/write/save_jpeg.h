// Saving a picture through the codec, plain or with an Exif segment spliced in behind SOI.
#pragma once

#include <praster.h>

#include "probe/exif_reader.h"
#include "read/records.h"

namespace exifkeep {

// Saves the picture as a JPEG file and, with `withExif`, splices in the segment built from the
// records. False when the picture is missing or empty or anything fails; what was saved is deleted
// then.
bool saveJpegWithRecords(ExifReader& reader, const char* destination, bool withExif,
                         PRaster* picture, PRaster* thumbnail, const ExifMetadata& metadata);

// The same with a segment of default fields, what is set in `exif`, and the Software of `primary`.
bool saveJpegWithNewExif(ExifReader& reader, const char* destination, bool withExif,
                         PRaster* picture, PRaster* thumbnail, const ExifIfdRecord& exif,
                         const ImageIfdRecord& primary);

// Saves the picture without metadata in the format that the extension names.
bool savePlain(ExifReader& reader, const char* destination, PRaster* picture);

}  // namespace exifkeep

// Saving a picture as an Exif TIFF file: the codec's file with a new front part, which holds the
// TIFF header, all directories and the thumbnail, in front of the codec's pixel strip.
#pragma once

#include <praster.h>

#include "probe/exif_reader.h"
#include "read/records.h"

namespace exifkeep {

// All put the whole file together in the temporary folder before they touch the destination. False
// when the picture is missing or empty or anything fails: the destination is then what it was.

// With the metadata of the picture's source, made to describe what is saved: what the exports call.
bool saveTiffWithRecords(ExifReader& reader, const char* destination, PRaster* picture,
                         PRaster* thumbnail, ExifMetadata& metadata);

// The same with the records just as they are. They leave with the picture's size in `primary`.
bool saveExifTiff(ExifReader& reader, const char* destination, PRaster* picture, PRaster* thumbnail,
                  ExifMetadata& metadata);

// With default fields, what is set in `exif`, and the Software of `primary`; `primary` leaves with
// the fields of the codec's file.
bool saveNewExifTiff(ExifReader& reader, const char* destination, PRaster* picture,
                     PRaster* thumbnail, ExifIfdRecord& exif, ImageIfdRecord& primary);

}  // namespace exifkeep

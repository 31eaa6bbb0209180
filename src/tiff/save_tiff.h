// SPDX-License-Identifier: MIT
// Saves a picture as an Exif TIFF file: a new front part with the TIFF header, all directories and
// the thumbnail, followed by the pixel strip of the codec's file.
#pragma once

#include <praster.h>

#include "probe/exif_reader.h"
#include "read/records.h"

namespace exifkeep {

// All functions return false, with the destination unchanged, if the picture is missing or empty or
// anything fails.

// With the metadata of the picture's source, adjusted to describe the saved pixels. The exports
// call this one.
bool saveTiffWithRecords(ExifReader& reader, const char* destination, PRaster* picture,
                         PRaster* thumbnail, ExifMetadata& metadata);

// The same without the adjustment. Sets the picture's size in `primary`.
bool saveExifTiff(ExifReader& reader, const char* destination, PRaster* picture, PRaster* thumbnail,
                  ExifMetadata& metadata);

// With default fields, the fields set in `exif`, and Software from `primary`. Sets all other fields
// of `primary` to those of the codec's file.
bool saveNewExifTiff(ExifReader& reader, const char* destination, PRaster* picture,
                     PRaster* thumbnail, ExifIfdRecord& exif, ImageIfdRecord& primary);

}  // namespace exifkeep

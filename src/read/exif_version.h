// A file's Exif version as a number.
#pragma once

#include "probe/exif_reader.h"

namespace exifkeep {

// "0220" as 2.2f, rounded once from exact arithmetic on single-precision constants; the four
// characters are not checked to be digits. 0.0f when the file has no version.
float readExifVersion(ExifReader& reader, const char* path);

float exifVersionNumber(const char* digits);

}  // namespace exifkeep

// The smallest Exif files that the program's tests need.
#pragma once

#include <string>
#include <string_view>

namespace exifkeep::test {

// A JPEG file without pixels: SOI and an Exif segment (little-endian) with Make, ExifVersion 2.2
// and, when not empty, RelatedSoundFile in 13 bytes.
std::string exifJpeg(std::string_view make, std::string_view soundFile = "");

}  // namespace exifkeep::test

// The smallest Exif files that the program's tests need.
#pragma once

#include <string>

#include "tiff_builder.h"

namespace exifkeep::test {

// A JPEG file without pixels: SOI and an Exif segment (little-endian) with Make, ExifVersion 2.2
// and, when not empty, RelatedSoundFile in 13 bytes.
inline std::string exifJpeg(const std::string& make, std::string soundFile = "") {
  Picture picture = {.image = {text(0x010F, make), exifPointer()}, .exif = {bytes(0x9000, "0220")}};
  if (!soundFile.empty()) {
    soundFile.resize(13);
    picture.exif.push_back(bytes(0xA004, soundFile, typeAscii));
  }
  return jpegBytes(tiffBytes(picture, Order::ii));
}

// The pixels of a JPEG file behind the Exif segment of another.
inline std::string withPixels(const std::string& exif, const std::string& pixels) {
  return exif.substr(0, exif.size() - jpegEnd.size()) + pixels.substr(jpegStart.size());
}

}  // namespace exifkeep::test

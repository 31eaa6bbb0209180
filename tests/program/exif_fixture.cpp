#include "program/exif_fixture.h"

#include "tiff_builder.h"

namespace exifkeep::test {

std::string exifJpeg(std::string_view make, std::string_view soundFile) {
  Picture picture = {.image = {text(0x010F, std::string(make)), exifPointer()},
                     .exif = {bytes(0x9000, "0220")}};
  std::string sound(soundFile);
  sound.resize(13);
  if (!soundFile.empty()) picture.exif.push_back(bytes(0xA004, sound, typeAscii));
  return jpegBytes(tiffBytes(picture, Order::ii));
}

}  // namespace exifkeep::test

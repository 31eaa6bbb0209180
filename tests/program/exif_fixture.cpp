// Offsets count from the TIFF header, 12 bytes into the file: IFD0 at 8, the Exif directory at 38,
// the make behind it, the sound file's name (13 bytes) last.
#include "program/exif_fixture.h"

namespace exifkeep::test {
namespace {

constexpr unsigned typeAscii = 2, typeLong = 4, typeUndefined = 7;
constexpr unsigned exifDirectoryAt = 38, valuesAt = 38 + 2 + 2 * 12 + 4;

std::string number(unsigned value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i);
  return text;
}

std::string entry(unsigned tag, unsigned type, unsigned count, const std::string& value) {
  return number(tag, 2) + number(type, 2) + number(count, 4) + value;
}

}  // namespace

std::string exifJpeg(std::string_view make, std::string_view soundFile) {
  const unsigned makeLength = make.size() + 1;
  const bool hasSound = !soundFile.empty();
  std::string sound(soundFile);
  sound.resize(13);
  std::string tiff = std::string("II*\0\x08\0\0\0", 8) + number(2, 2) +
                     entry(0x010F, typeAscii, makeLength, number(valuesAt, 4)) +
                     entry(0x8769, typeLong, 1, number(exifDirectoryAt, 4)) + number(0, 4);
  tiff += number(hasSound ? 2 : 1, 2) + entry(0x9000, typeUndefined, 4, "0220");
  tiff += hasSound ? entry(0xA004, typeAscii, 13, number(valuesAt + makeLength, 4))
                   : std::string(12, '\0');
  tiff += number(0, 4) + std::string(make) + '\0' + sound;
  const unsigned length = 2 + 6 + tiff.size();
  return std::string("\xFF\xD8\xFF\xE1") + static_cast<char>(length >> 8) +
         static_cast<char>(length) + std::string("Exif\0\0", 6) + tiff + "\xFF\xD9";
}

}  // namespace exifkeep::test

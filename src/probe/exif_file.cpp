#include "probe/exif_file.h"

namespace exifkeep {

void ExifFile::setLayout(uint32_t tiffBase, bool littleEndian) {
  tiffBase_ = tiffBase;
  littleEndian_ = littleEndian;
}

bool ExifFile::read(uint64_t at, uint16_t& value) {
  uint8_t bytes[2];
  if (readAt(at, bytes, sizeof bytes) != sizeof bytes) return false;
  value = toShort(bytes);
  return true;
}

bool ExifFile::read(uint64_t at, uint32_t& value) {
  uint8_t bytes[4];
  if (readAt(at, bytes, sizeof bytes) != sizeof bytes) return false;
  value = toLong(bytes);
  return true;
}

}  // namespace exifkeep

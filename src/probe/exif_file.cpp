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

uint16_t ExifFile::toShort(const uint8_t* bytes) const {
  const uint32_t low = bytes[littleEndian_ ? 0 : 1];
  const uint32_t high = bytes[littleEndian_ ? 1 : 0];
  return static_cast<uint16_t>(high << 8 | low);
}

uint32_t ExifFile::toLong(const uint8_t* bytes) const {
  const uint32_t first = toShort(bytes);
  const uint32_t second = toShort(bytes + 2);
  return littleEndian_ ? second << 16 | first : first << 16 | second;
}

}  // namespace exifkeep

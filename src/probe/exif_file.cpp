#include "probe/exif_file.h"

#include <cstring>

namespace exifkeep {

std::optional<bool> ExifFile::byteOrderAt(uint64_t at) {
  char mark[2];
  if (readAt(at, mark, sizeof mark) != sizeof mark) return {};
  if (std::memcmp(mark, "II", sizeof mark) == 0) return true;
  if (std::memcmp(mark, "MM", sizeof mark) == 0) return false;
  return {};
}

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

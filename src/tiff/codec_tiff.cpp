// SPDX-License-Identifier: MIT
#include "tiff/codec_tiff.h"

#include "probe/directory_entries.h"
#include "probe/tags.h"
#include "read/read_metadata.h"

namespace exifkeep {

namespace {

constexpr uint32_t offsetField = 4;
constexpr uint32_t directoryPosition = 8;

void setByteOrder(ExifFile& file) {
  file.setLayout(0, file.byteOrderAt(0).value_or(true));
}

}  // namespace

uint32_t findStripOffset(ExifFile& file) {
  setByteOrder(file);
  uint32_t offset = 0;
  DirectoryEntries entries(file, directoryPosition);
  for (IfdEntry entry; entries.next(entry);)
    if (entry.tag == tag::stripOffsets) offset = file.toLong(entry.value);
  return offset;
}

bool readSavedTiffDirectory(ExifReader& reader, ExifFile& file, ImageIfdRecord& record) {
  if (!file.isOpen()) return false;
  setByteOrder(file);
  reader.littleEndian = file.littleEndian();
  DirectoryWalk walk(file, directoryPosition);
  while (walk.next()) decodeImageEntry(reader, walk, record);
  return true;
}

std::optional<uint32_t> locateStrip(ExifFile& file) {
  const uint32_t at = findStripOffset(file);
  uint32_t directory;
  if (!file.read(offsetField, directory) || directory != directoryPosition) return {};
  if (at <= directoryPosition) return {};
  return at;
}

}  // namespace exifkeep

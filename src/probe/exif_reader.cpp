// SPDX-License-Identifier: MIT
#include "probe/exif_reader.h"

#include <cstring>

#include "probe/directory_entries.h"
#include "probe/tags.h"
#include "system/path.h"

namespace exifkeep {

namespace {

constexpr uint16_t soi = 0xFFD8;
constexpr uint16_t app0 = 0xFFE0;
constexpr uint16_t app1 = 0xFFE1;

// JPEG markers and lengths are always big-endian (ITU-T T.81, B.1.1.1).
bool readMarker(ExifFile& file, uint64_t at, uint16_t& value) {
  uint8_t bytes[2];
  if (file.readAt(at, bytes, sizeof bytes) != sizeof bytes) return false;
  value = static_cast<uint16_t>(bytes[0] << 8 | bytes[1]);
  return true;
}

}  // namespace

bool hasExifExtension(const char* path) {
  return isJpegName(path) || isTiffName(path);
}

int32_t asDirectoryPosition(uint64_t position) {
  return position <= INT32_MAX ? static_cast<int32_t>(position) : -1;
}

ImageCodecBridge& ExifReader::codec() {
  if (!codec_) {
    ownedCodec_ = std::make_unique<ImageCodecBridge>();
    codec_ = ownedCodec_.get();
    codec_->loadCapabilities();
  }
  return *codec_;
}

uint32_t ExifReader::tiffBase() const {
  // SOI, the APP1 marker and length, "Exif" and two zero bytes (Exif 2.2, 4.7.2).
  constexpr uint32_t app1Head = 2 + 2 + 2 + 6;
  return isJpeg ? app0Size + app1Head : 0;
}

bool ExifReader::probeFile(const char* path) {
  if (!hasExifExtension(path)) return false;
  ExifFile file(path);
  return probeFile(file);
}

bool ExifReader::probeFile(ExifFile& file) {
  exifIfdOffset = primaryIfdOffset = -1;
  app0Size = 0;
  if (!file.isOpen()) return false;
  const std::optional<bool> isLittleEndian = file.byteOrderAt(0);
  return isLittleEndian ? probeTiff(file, *isLittleEndian) : probeJpeg(file);
}

bool ExifReader::probeTiff(ExifFile& file, bool hasLittleEndianMark) {
  isJpeg = 0;
  littleEndian = hasLittleEndianMark;
  file.setLayout(0, hasLittleEndianMark);
  // The number 42 after the mark is not checked, neither here nor in JPEG files.
  uint32_t offset;
  if (!file.read(4, offset)) return false;
  primaryIfdOffset = asDirectoryPosition(offset);
  return locateExifDirectory(file);
}

// Looks at fixed positions instead of walking the segments. Intended: files from this library and
// from the cameras it was made for begin with SOI, APP1 or SOI, APP0, APP1, and other files do not
// become Exif files because of an Exif segment further on. An APP0 segment of length L ends at
// L + 4, but the next marker is expected at L + 2; unless the two bytes there happen to be an APP1
// marker, they and the real marker are skipped unread. If the first segment is of any other kind,
// it is likewise accepted if "Exif" is at byte 8.
bool ExifReader::probeJpeg(ExifFile& file) {
  uint16_t start, marker;
  if (!readMarker(file, 0, start) || start != soi) return false;
  uint64_t at = 2;
  if (!readMarker(file, at, marker)) return false;
  if (marker == app0) {
    uint16_t length;
    if (!readMarker(file, 4, length)) return false;
    app0Size = static_cast<uint16_t>(length + 2);
    at = uint64_t{length} + 2;
    if (!readMarker(file, at, marker)) return false;
  }
  const uint64_t identifier = at + (marker == app1 ? 4 : 6);

  char text[4];
  if (file.readAt(identifier, text, sizeof text) != sizeof text) return false;
  if (std::memcmp(text, "Exif", sizeof text) != 0) return false;
  const uint64_t header = identifier + 6;
  const std::optional<bool> isLittleEndian = file.byteOrderAt(header);
  if (!isLittleEndian) return false;

  isJpeg = 1;
  littleEndian = *isLittleEndian;
  file.setLayout(tiffBase(), *isLittleEndian);
  uint32_t offset;
  if (!file.read(header + 4, offset)) return false;
  primaryIfdOffset = asDirectoryPosition(file.positionOf(offset));
  return locateExifDirectory(file);
}

// The first Exif pointer in IFD0 is used. Entries are not assumed to be sorted.
bool ExifReader::locateExifDirectory(ExifFile& file) {
  if (primaryIfdOffset < 0) return false;
  IfdEntry entry;
  DirectoryEntries primary(file, static_cast<uint32_t>(primaryIfdOffset));
  if (!primary.find(tag::exifIfdPointer, entry)) return false;
  if (!entry.hasValueBytes(sizeof entry.value)) return false;
  exifIfdOffset = asDirectoryPosition(file.positionOf(file.toLong(entry.value)));
  if (exifIfdOffset < 0) return false;
  return DirectoryEntries(file, static_cast<uint32_t>(exifIfdOffset)).find(tag::exifVersion, entry);
}

}  // namespace exifkeep

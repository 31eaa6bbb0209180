// SPDX-License-Identifier: MIT
#include "read/read_metadata.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "read/directory_walk.h"

namespace exifkeep {

namespace {

// Loads at most `maxLength` bytes of an entry's value, as many as there are.
std::unique_ptr<uint8_t[]> loadValue(ExifFile& file, const IfdEntry& entry, uint32_t maxLength,
                                     uint32_t& length) {
  length = entry.hasValueBytes(4) ? std::min(entry.count, maxLength) : 0;
  // Throws if memory runs out, so that the call fails: a save must not lose the value.
  auto bytes = std::make_unique_for_overwrite<uint8_t[]>(length);
  const uint64_t at = file.positionOf(file.toLong(entry.value));
  length = static_cast<uint32_t>(file.readAt(at, bytes.get(), length));
  return bytes;
}

void loadMakerNote(ExifReader& reader, ExifFile& file, const IfdEntry& entry,
                   ExifIfdRecord& record) {
  reader.makerNoteBuffer = loadValue(file, entry, reader.maxValueLength, record.makerNoteLength);
  record.makerNote = reader.makerNoteBuffer.get();
  record.hasMakerNote = record.makerNote != nullptr;
}

// The comment follows an 8-byte character code (Exif 2.2, 4.6.5 C). The code is text: it ends at a
// zero byte.
void loadUserComment(ExifReader& reader, ExifFile& file, const IfdEntry& entry,
                     ExifIfdRecord& record) {
  constexpr uint32_t codeLength = sizeof record.userCommentCode;
  uint32_t length;
  reader.userCommentBuffer = loadValue(file, entry, reader.maxValueLength, length);
  record.hasUserComment = reader.userCommentBuffer != nullptr;
  if (!record.hasUserComment) return;
  const uint8_t* bytes = reader.userCommentBuffer.get();
  const uint8_t* codeEnd = std::find(bytes, bytes + std::min(length, codeLength), 0);
  std::copy(bytes, codeEnd, record.userCommentCode);
  if (length <= codeLength) return;
  record.userCommentLength = length - codeLength;
  record.userComment = bytes + codeLength;
}

// The number formed by the leading digits; 0 if there are none.
int leadingNumber(std::span<const char> version) {
  int number = 0;
  for (char c : version) {
    if (c < '0' || c > '9') break;
    number = number * 10 + (c - '0');
  }
  return number;
}

// Before Exif 2.1 there were no interoperability rules, whatever the file's directory says.
void applyVersionRule(ExifIfdRecord& record) {
  if (!record.isR98Interoperability || leadingNumber(record.exifVersion) >= 210) return;
  record.isR98Interoperability = 0;
  std::memset(record.interoperabilityVersion, 0, sizeof record.interoperabilityVersion);
}

// The GPS directory's position follows from both pointers and the Exif directory's position. If
// pointers are repeated, the last values are in the record, but the Exif directory's position is
// that of the first pointer, so the difference may be negative: 32-bit arithmetic is intended.
void updateGpsPosition(ExifReader& reader, const ImageIfdRecord& record) {
  if (reader.exifIfdOffset == -1 || !record.hasGpsIfdPointer || !record.hasExifIfdPointer) return;
  reader.gpsIfdOffset = static_cast<int32_t>(record.gpsIfdPointer - record.exifIfdPointer +
                                             static_cast<uint32_t>(reader.exifIfdOffset));
}

// REQUIRES: the directory's position is known.
void readImageDirectory(ExifReader& reader, ExifFile& file, int32_t position,
                        ImageIfdRecord& record) {
  DirectoryWalk walk(file, static_cast<uint32_t>(position));
  while (walk.next()) decodeImageEntry(reader, walk, record);
}

void readPrimaryDirectory(ExifReader& reader, ExifFile& file, ImageIfdRecord& record) {
  resetImageIfdRecord(reader, record);
  readImageDirectory(reader, file, reader.primaryIfdOffset, record);
}

// Without an IFD1 the record is only reset.
void readThumbnailDirectory(ExifReader& reader, ExifFile& file, ImageIfdRecord& record) {
  resetImageIfdRecord(reader, record);
  const int32_t position = locateThumbnailDirectory(reader, file);
  if (position > 0) readImageDirectory(reader, file, position, record);
}

void decodeExifEntry(DirectoryWalk& walk, ExifIfdRecord& record, DeferredEntries& deferred) {
  walk.decodeEntry(exifIndex, &record, &deferred);
}

void decodeGpsEntry(DirectoryWalk& walk, GpsIfdRecord& record) {
  walk.decodeEntry(gpsIndex, &record);
}

void readGpsDirectory(ExifReader& reader, ExifFile& file, GpsIfdRecord& record) {
  if (reader.gpsIfdOffset == -1) return;
  resetGpsIfdRecord(record);
  DirectoryWalk walk(file, static_cast<uint32_t>(reader.gpsIfdOffset));
  while (walk.next()) decodeGpsEntry(walk, record);
}

// IFD1 may have pointers too, which changed the position; those of IFD0 take precedence.
void readLocatedGpsDirectory(ExifReader& reader, ExifFile& file, ExifMetadata& metadata) {
  if (reader.gpsIfdOffset < 1) return;
  updateGpsPosition(reader, metadata.primary);
  readGpsDirectory(reader, file, metadata.gps);
}

void readExifDirectory(ExifReader& reader, ExifFile& file, ExifIfdRecord& record) {
  resetExifIfdRecord(reader, record);
  DeferredEntries deferred;
  DirectoryWalk walk(file, static_cast<uint32_t>(reader.exifIfdOffset));
  while (walk.next()) decodeExifEntry(walk, record, deferred);
  if (deferred.makerNote) loadMakerNote(reader, file, *deferred.makerNote, record);
  if (deferred.userComment) loadUserComment(reader, file, *deferred.userComment, record);
  for (size_t i = 0; i < deferred.interoperabilityCount; ++i) {
    DirectoryWalk interoperability(file, file.positionOf(deferred.interoperability[i]));
    while (interoperability.next()) interoperability.decodeEntry(interoperabilityIndex, &record);
  }
  applyVersionRule(record);
}

bool readListedMetadata(ExifReader& reader, ExifFile& file, ExifMetadata& metadata) {
  if (!reader.probeFile(file)) return false;
  readExifDirectory(reader, file, metadata.exif);
  readPrimaryDirectory(reader, file, metadata.primary);
  return file.error() == ERROR_SUCCESS;
}

}  // namespace

void decodeImageEntry(ExifReader& reader, DirectoryWalk& walk, ImageIfdRecord& record) {
  walk.decodeEntry(imageIndex, &record);
  updateGpsPosition(reader, record);
}

bool readExifDirectory(ExifReader& reader, const char* path, ExifIfdRecord& record) {
  if (!hasExifExtension(path)) return false;
  ExifFile file(path);
  if (!reader.probeFile(file)) return false;
  readExifDirectory(reader, file, record);
  return file.error() == ERROR_SUCCESS;
}

int32_t locateThumbnailDirectory(ExifReader& reader, ExifFile& file) {
  if (reader.primaryIfdOffset == -1) return 0;
  const DirectoryEntries entries(file, static_cast<uint32_t>(reader.primaryIfdOffset));
  uint32_t link = 0;
  file.read(entries.endPosition(), link);
  reader.thumbnailIfdOffset = link ? asDirectoryPosition(file.positionOf(link)) : 0;
  return reader.thumbnailIfdOffset;
}

bool readListedMetadata(ExifReader& reader, const char* path, ExifMetadata& metadata) {
  if (!hasExifExtension(path)) return false;
  ExifFile file(path);
  return readListedMetadata(reader, file, metadata);
}

bool readExifMetadata(ExifReader& reader, const char* path, ExifMetadata& metadata) {
  if (!hasExifExtension(path)) return false;
  ExifFile file(path);
  return file.isOpen() && readExifMetadata(reader, file, metadata);
}

bool readExifMetadata(ExifReader& reader, ExifFile& file, ExifMetadata& metadata) {
  const bool isExif = readListedMetadata(reader, file, metadata);
  readThumbnailDirectory(reader, file, metadata.thumbnail);
  if (isExif) readLocatedGpsDirectory(reader, file, metadata);
  return isExif && file.error() == ERROR_SUCCESS;
}

}  // namespace exifkeep

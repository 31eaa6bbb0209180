// SPDX-License-Identifier: MIT
#include "read/read_source.h"

#include <windows.h>

#include "read/read_metadata.h"

namespace exifkeep {

namespace {

void resetRecords(ExifReader& reader, ExifMetadata& metadata) {
  resetExifIfdRecord(reader, metadata.exif);
  resetImageIfdRecord(reader, metadata.primary);
  resetImageIfdRecord(reader, metadata.thumbnail);
  resetGpsIfdRecord(metadata.gps);
}

// Whether opening the file would fail again later. Other errors may be temporary.
bool isLasting(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_ACCESS_DENIED:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_CANT_RESOLVE_FILENAME: return true;
    default: return false;
  }
}

}  // namespace

Source readSource(ExifReader& reader, const char* path, ExifMetadata& metadata) {
  resetRecords(reader, metadata);
  if (!hasExifExtension(path)) return Source::withoutExif;
  ExifFile file(path);
  file.size();  // closes what is no file
  if (!file.isOpen()) return isLasting(file.error()) ? Source::withoutExif : Source::unreadable;
  const bool isExif = readExifMetadata(reader, file, metadata);
  if (file.error() != ERROR_SUCCESS) return Source::unreadable;
  return isExif ? Source::exif : Source::withoutExif;
}

}  // namespace exifkeep

// Reads a file's directories into their records. What is there is decoded: a short read or an odd
// entry is no failure. A read that the system fails is one. A call opens its file once.
#pragma once

#include "probe/exif_reader.h"
#include "read/directory_walk.h"
#include "read/records.h"

namespace exifkeep {

// False, with the record untouched, when the file is no Exif file.
bool readExifDirectory(ExifReader& reader, const char* path, ExifIfdRecord& record);

// Decodes the entry that the walk is at, of an image directory, keeping the reader's GPS directory
// position up to date.
void decodeImageEntry(ExifReader& reader, DirectoryWalk& walk, ImageIfdRecord& record);

// The position of IFD1, also left in reader.thumbnailIfdOffset; 0 when there is none.
int32_t locateThumbnailDirectory(ExifReader& reader, ExifFile& file);

// Reads the Exif directory and IFD0. False, with the records untouched, when the file is no Exif
// file.
bool readListedMetadata(ExifReader& reader, const char* path, ExifMetadata& metadata);

// Reads these and then IFD1 and the GPS directory, where the file has them. Without IFD1 its record
// is reset; without a GPS directory that record stays as it was.
bool readExifMetadata(ExifReader& reader, const char* path, ExifMetadata& metadata);

// The same from a file that is open; the name has been looked at.
bool readExifMetadata(ExifReader& reader, ExifFile& file, ExifMetadata& metadata);

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// Reads a file's directories into their records. Whatever is there is decoded: a truncated file or
// an odd entry is not a failure, but a read error is. Each call opens its file once.
#pragma once

#include "probe/exif_reader.h"
#include "read/directory_walk.h"
#include "read/records.h"

namespace exifkeep {

// False, with the record unchanged, if the file is not an Exif file.
bool readExifDirectory(ExifReader& reader, const char* path, ExifIfdRecord& record);

// Decodes the walk's current entry, of an image directory, and updates the reader's GPS directory
// position.
void decodeImageEntry(ExifReader& reader, DirectoryWalk& walk, ImageIfdRecord& record);

// Returns the position of IFD1, or 0 if there is none, and sets reader.thumbnailIfdOffset to it.
int32_t locateThumbnailDirectory(ExifReader& reader, ExifFile& file);

// Reads the Exif directory and IFD0. False, with the records unchanged, if the file is not an Exif
// file.
bool readListedMetadata(ExifReader& reader, const char* path, ExifMetadata& metadata);

// Also reads IFD1 and the GPS directory. Without an IFD1 its record is reset; without a GPS
// directory its record is unchanged.
bool readExifMetadata(ExifReader& reader, const char* path, ExifMetadata& metadata);

// The same for an open file, whose name is not checked.
bool readExifMetadata(ExifReader& reader, ExifFile& file, ExifMetadata& metadata);

}  // namespace exifkeep

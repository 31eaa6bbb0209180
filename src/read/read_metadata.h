// The directory readers and the one operation through which the exports read a whole file. Each
// reader has a front that takes a path (and probes and opens it) and one that takes the open,
// probed file, so that a call opens its file once.
#pragma once

#include "probe/exif_reader.h"
#include "read/directory_walk.h"
#include "read/records.h"

namespace exifkeep {

// Each resets its record only when its directory is known and the file is open, and then decodes
// what is there: a short read or an odd entry is no failure. False, with the record untouched,
// otherwise.
bool readExifDirectory(ExifReader& reader, const char* path, ExifIfdRecord& record);
bool readPrimaryDirectory(ExifReader& reader, const char* path, ImageIfdRecord& record);
bool readGpsDirectory(ExifReader& reader, const char* path, GpsIfdRecord& record);
// Does not probe: works from what the reader knows. Without an IFD1 the record is reset and the
// result is false.
bool readThumbnailDirectory(ExifReader& reader, const char* path, ImageIfdRecord& record);

// REQUIRES: `reader` has probed `file` with success.
void readExifDirectory(ExifReader& reader, ExifFile& file, ExifIfdRecord& record);

// Decodes the entry that the walk is at, of an image directory, keeping the reader's GPS directory
// position up to date.
void decodeImageEntry(ExifReader& reader, DirectoryWalk& walk, ImageIfdRecord& record);

// The position of IFD1, also left in reader.thumbnailIfdOffset; 0 when there is none.
int32_t locateThumbnailDirectory(ExifReader& reader, ExifFile& file);

// Reads the Exif directory and IFD0, then IFD1 and the GPS directory where records for them are
// given. True when the first two were read.
bool readExifMetadata(ExifReader& reader, const char* path, ExifIfdRecord& exif,
                      ImageIfdRecord& primary, ImageIfdRecord* thumbnail = nullptr,
                      GpsIfdRecord* gps = nullptr);

}  // namespace exifkeep

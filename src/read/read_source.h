// SPDX-License-Identifier: MIT
// Reads the metadata of a save's source picture.
#pragma once

#include "probe/exif_reader.h"
#include "read/records.h"

namespace exifkeep {

enum class Source {
  exif,         // an Exif file, which has been read
  withoutExif,  // not an Exif file, missing, or not permitted to be read
  unreadable    // an open or read error: its content is unknown
};

// Fills the records, with default values where the source has none. The save must fail if the
// source is `unreadable`, or the metadata would be lost.
Source readSource(ExifReader& reader, const char* path, ExifMetadata& metadata);

}  // namespace exifkeep

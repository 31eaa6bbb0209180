// The metadata that a save starts from: those of the picture's source.
#pragma once

#include "probe/exif_reader.h"
#include "read/records.h"

namespace exifkeep {

enum class Source {
  exif,         // an Exif file, whose metadata are read
  withoutExif,  // any other, none at all, or one that may not be read
  unreadable    // the system failed to open or read it: nobody knows what it holds
};

// Fills the records, with their starting values where the source has nothing. A source that is
// `unreadable` must not be saved over, or it would lose its metadata.
Source readSource(ExifReader& reader, const char* path, ExifMetadata& metadata);

}  // namespace exifkeep

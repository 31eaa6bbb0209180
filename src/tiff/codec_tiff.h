// SPDX-License-Identifier: MIT
// TIFF files as the codec writes them: the directory directly after the 8-byte header, the pixels
// in a single strip of uncompressed 8-bit RGB rows.
#pragma once

#include <praster.h>

#include <cstdint>
#include <optional>

#include "probe/exif_reader.h"
#include "read/records.h"

namespace exifkeep {

// These two read the directory at position 8 whatever the header says. Intended: the codec writes
// it there.

// The value of the directory's last StripOffsets entry; 0 if there is none.
uint32_t findStripOffset(ExifFile& file);

// Decodes the directory into the record, which is not reset, and sets the reader's byte order to
// the file's. False if the file is not open.
bool readSavedTiffDirectory(ExifReader& reader, ExifFile& file, ImageIfdRecord& record);

// The size of a strip with a whole picture.
constexpr uint64_t stripSize(unsigned width, unsigned height) {
  return uint64_t{width} * height * 3;
}

// The position of the strip, which need not be in the file; none if the file does not have the
// codec's form.
std::optional<uint32_t> locateStrip(ExifFile& file);

}  // namespace exifkeep

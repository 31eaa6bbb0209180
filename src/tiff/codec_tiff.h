// TIFF files as the codec writes them: the directory right behind the 8-byte header, the pixels in
// one strip of uncompressed 8-bit RGB rows.
#pragma once

#include <praster.h>

#include <cstdint>
#include <optional>

#include "probe/exif_reader.h"
#include "read/records.h"

namespace exifkeep {

// These two read the directory at position 8 whatever the header says: intended, the codec writes
// it there.

// The value of the directory's last StripOffsets entry; 0 when there is none.
uint32_t findStripOffset(ExifFile& file);

// Decodes the directory into the record, which is not reset, and leaves the file's byte order in
// the reader. False when the file is not open.
bool readSavedTiffDirectory(ExifReader& reader, ExifFile& file, ImageIfdRecord& record);

// Bytes of a strip that holds a whole picture.
constexpr uint64_t stripSize(unsigned width, unsigned height) {
  return uint64_t{width} * height * 3;
}

// Where the strip of `size` bytes begins; none when the file is not of the codec's form or does not
// hold the whole strip.
std::optional<uint32_t> locateStrip(ExifFile& file, uint64_t size);

}  // namespace exifkeep

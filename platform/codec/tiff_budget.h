// SPDX-License-Identifier: MIT
// Limits the cost of decoding a TIFF picture, which is estimated from its directory.
#pragma once

#include <tiffio.h>

#include <cstddef>
#include <cstdint>

namespace exifkeep {

// Whether the cost of decoding is justified by the sizes of picture and file. `isConverted`:
// whether the library's conversion is used, which processes a whole strip or row of tiles at a
// time.
bool isWithinBudget(TIFF* tiff, uint64_t fileSize, bool isConverted);

// The number of rows of a strip or tile.
uint32_t rowsInPart(TIFF* tiff);

// The size of the buffer for stored bytes that must be given to the library. Its own buffer would
// be reallocated according to sizes in the file, and version 4.5.0 crashes if that fails; it also
// mistakes that buffer's size for the size of an uncompressed tile and rejects most of them.
size_t bytesReadAtOnce(TIFF* tiff, bool isConverted);

}  // namespace exifkeep

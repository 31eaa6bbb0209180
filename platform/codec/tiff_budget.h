// What decoding a TIFF picture may cost, judged by its directory before any of it is decoded.
#pragma once

#include <tiffio.h>

#include <cstddef>
#include <cstdint>

namespace exifkeep {

// Whether decoding costs no more than the picture and the file justify. `isConverted`: by the
// library's conversion, which takes a whole strip or row of tiles at a time.
bool isWithinBudget(TIFF* tiff, uint64_t fileSize, bool isConverted);

// The rows of a strip or tile.
uint32_t rowsInPart(TIFF* tiff);

// The size of the buffer for stored bytes that the library is to be given. With one of its own it
// allocates as it reads, by what the file claims, and 4.5.0 crashes when that fails; it also takes
// its own for the size of an uncompressed tile, and so refuses most of these.
size_t bytesReadAtOnce(TIFF* tiff, bool isConverted);

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
#include "tiff_budget.h"

#include <algorithm>

namespace exifkeep {
namespace {

constexpr uint64_t mebi = 1 << 20;
constexpr uint64_t maxRowSize = 2 * mebi;      // stored; 32 of them are read at a time
constexpr uint64_t maxPixelBits = 128;         // bits
constexpr uint64_t paddingAllowed = 4 * mebi;  // pixels of tiles outside the picture
constexpr uint64_t maxWork = 1024 * mebi;      // bytes of a strip or row of tiles in conversion

template <class Number>
Number fieldOf(TIFF* tiff, uint32_t tag) {
  Number value = 0;
  TIFFGetFieldDefaulted(tiff, tag, &value);
  return value;
}

// The compressions of TIFF 6.0, and Deflate. The library's other decoders (JBIG, LZMA, WebP and
// more) take memory and time according to sizes in their data, and old-style JPEG may have any
// number of scans.
bool isDecoded(uint16_t compression) {
  switch (compression) {
    case COMPRESSION_NONE:
    case COMPRESSION_CCITTRLE:
    case COMPRESSION_CCITTFAX3:
    case COMPRESSION_CCITTFAX4:
    case COMPRESSION_LZW:
    case COMPRESSION_JPEG:
    case COMPRESSION_ADOBE_DEFLATE:
    case COMPRESSION_DEFLATE:
    case COMPRESSION_PACKBITS: return true;
    default: return false;
  }
}

uint32_t partCount(TIFF* tiff) {
  return TIFFIsTiled(tiff) ? TIFFNumberOfTiles(tiff) : TIFFNumberOfStrips(tiff);
}

uint64_t largestPartSize(TIFF* tiff) {
  uint64_t largest = 0;
  for (uint32_t i = 0; i < partCount(tiff); ++i)
    largest = std::max<uint64_t>(largest, TIFFGetStrileByteCount(tiff, i));
  return largest;
}

// Whether all parts together are no larger than the file, so that no data is decoded repeatedly.
bool partsFit(TIFF* tiff, uint64_t fileSize) {
  uint64_t left = fileSize;
  for (uint32_t i = 0; i < partCount(tiff); ++i) {
    const uint64_t size = TIFFGetStrileByteCount(tiff, i);
    if (size > left) return false;
    left -= size;
  }
  return true;
}

uint64_t partsNeeded(uint64_t length, uint64_t part) {
  return (length + part - 1) / part;
}

// REQUIRES: width and height are acceptable.
bool tilesSuit(TIFF* tiff) {
  const uint64_t width = fieldOf<uint32_t>(tiff, TIFFTAG_IMAGEWIDTH);
  const uint64_t height = fieldOf<uint32_t>(tiff, TIFFTAG_IMAGELENGTH);
  const uint64_t tileWidth = fieldOf<uint32_t>(tiff, TIFFTAG_TILEWIDTH);
  const uint64_t tileHeight = rowsInPart(tiff);
  constexpr uint64_t maxTileSide = 2 * mebi;
  if (tileWidth == 0 || tileWidth > maxTileSide || tileHeight == 0 || tileHeight > maxTileSide)
    return false;
  const uint64_t across = partsNeeded(width, tileWidth) * tileWidth;
  const uint64_t down = partsNeeded(height, tileHeight) * tileHeight;
  return across * down <= 4 * width * height + paddingAllowed;
}

// Counts 32-bit pixels for the rows, one strip or tile of each plane, and its stored bytes.
bool conversionFits(TIFF* tiff) {
  const uint64_t width = fieldOf<uint32_t>(tiff, TIFFTAG_IMAGEWIDTH);
  const uint64_t height = fieldOf<uint32_t>(tiff, TIFFTAG_IMAGELENGTH);
  const uint64_t pixels = width * std::min<uint64_t>(height, rowsInPart(tiff));
  const bool isPlanar = fieldOf<uint16_t>(tiff, TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE;
  const uint64_t part = TIFFIsTiled(tiff) ? TIFFTileSize64(tiff) : TIFFStripSize64(tiff);
  if (part == 0 || part > maxWork) return false;
  return pixels * 4 + part * (isPlanar ? 4 : 1) + largestPartSize(tiff) <= maxWork;
}

}  // namespace

bool isWithinBudget(TIFF* tiff, uint64_t fileSize, bool isConverted) {
  const uint64_t pixelBits = uint64_t{fieldOf<uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE)} *
                             fieldOf<uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL);
  const uint64_t row = TIFFIsTiled(tiff) ? TIFFTileRowSize64(tiff) : TIFFScanlineSize64(tiff);
  return isDecoded(fieldOf<uint16_t>(tiff, TIFFTAG_COMPRESSION)) && pixelBits <= maxPixelBits &&
         row <= maxRowSize && partsFit(tiff, fileSize) && (!TIFFIsTiled(tiff) || tilesSuit(tiff)) &&
         (!isConverted || conversionFits(tiff));
}

uint32_t rowsInPart(TIFF* tiff) {
  return fieldOf<uint32_t>(tiff, TIFFIsTiled(tiff) ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP);
}

// When reading by rows, the library reads 16 rows and 5000 bytes ahead and needs room for twice
// that. It may read JPEG strips as a whole.
size_t bytesReadAtOnce(TIFF* tiff, bool isConverted) {
  const auto compression = fieldOf<uint16_t>(tiff, TIFFTAG_COMPRESSION);
  if (isConverted && TIFFIsTiled(tiff) && compression == COMPRESSION_NONE)
    return TIFFTileSize64(tiff);
  const uint64_t ahead = 2 * (16 * TIFFScanlineSize64(tiff) + 5000);
  const bool isWhole = isConverted || compression == COMPRESSION_JPEG;
  return isWhole ? std::max(ahead, largestPartSize(tiff)) : ahead;
}

}  // namespace exifkeep

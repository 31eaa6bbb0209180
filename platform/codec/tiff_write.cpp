// SPDX-License-Identifier: MIT
// Writes all images as TIFF files of the same form: little-endian, directory at offset 8, its
// values, then one uncompressed strip of 8-bit RGB rows to the end of the file. TIFF saving
// (src/tiff) moves that strip and relies on this form.
#include <algorithm>
#include <vector>

#include "picture_format.h"
#include "tiff_handle.h"
#include "tiff_read.h"

namespace exifkeep {
namespace {

// Each write call costs time: writing 12 megapixels in pieces of 256 KiB takes a fifth longer.
constexpr size_t bytesAtOnce = 1 << 22;

size_t rowSize(const PictureRows& rows) {
  return size_t{rows.width()} * 3;
}

void setResolution(TIFF* tiff, const PictureRows& rows) {
  const unsigned x = PRaster::dotsPerInch(rows.dpmX());
  const unsigned y = PRaster::dotsPerInch(rows.dpmY());
  const bool known = x != 0 && y != 0;
  TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, known ? RESUNIT_INCH : RESUNIT_NONE);
  TIFFSetField(tiff, TIFFTAG_XRESOLUTION, known ? x : 1.0);
  TIFFSetField(tiff, TIFFTAG_YRESOLUTION, known ? y : 1.0);
}

void setFields(TIFF* tiff, const PictureRows& rows) {
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, rows.width());
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, rows.height());
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, rows.height());
  setResolution(tiff, rows);
}

// Leaves the strip's offset and count for later, so that the directory precedes the pixels.
bool writeDirectory(TIFF* tiff) {
  return TIFFDeferStrileArrayWriting(tiff) == 1 && TIFFWriteCheck(tiff, 0, "picture") == 1 &&
         TIFFWriteDirectory(tiff) == 1 && TIFFSetDirectory(tiff, 0) == 1;
}

// Repeated raw writes to a strip append to it. The values of the bytes do not matter here.
bool countStrip(TIFF* tiff, uint64_t size, std::vector<BYTE>& piece) {
  for (uint64_t left = size; left > 0;) {
    const auto bytes = static_cast<tmsize_t>(std::min<uint64_t>(left, piece.size()));
    if (TIFFWriteRawStrip(tiff, 0, piece.data(), bytes) != bytes) return false;
    left -= static_cast<uint64_t>(bytes);
  }
  return true;
}

bool makeFront(const PictureRows& rows, std::vector<BYTE>& piece, TiffFront& front) {
  const TiffHandle tiff = createTiff(front);
  if (!tiff) return false;
  setFields(tiff.get(), rows);
  if (!writeDirectory(tiff.get())) return false;
  front.endFront();
  const uint64_t size = uint64_t{rowSize(rows)} * rows.height();
  return countStrip(tiff.get(), size, piece) && TIFFForceStrileArrayWriting(tiff.get()) == 1 &&
         TIFFFlush(tiff.get()) == 1 && front.size() == front.bytes().size() + size;
}

bool sendStrip(const PictureOutput& output, const PictureRows& rows, std::vector<BYTE>& piece) {
  const size_t rowBytes = rowSize(rows);
  const auto maxRows = static_cast<unsigned>(piece.size() / rowBytes);
  std::vector<BYTE> expanded(rows.bits() == 24 ? 0 : rowBytes);
  for (unsigned y = 0; y < rows.height(); y += maxRows) {
    const unsigned count = std::min(maxRows, rows.height() - y);
    for (unsigned i = 0; i < count; ++i) {
      if (!expanded.empty()) rows.expand(y + i, expanded.data());
      const BYTE* bgr = expanded.empty() ? rows.row(y + i) : expanded.data();
      swapRedAndBlue(bgr, &piece[i * rowBytes], rows.width());
      rows.report(y + i);
    }
    if (!output.write(piece.data(), rowBytes * count)) return false;
  }
  return true;
}

bool encodeTiff(const PictureOutput& output, const PictureRows& rows) {
  std::vector<BYTE> piece(rowSize(rows) *
                          std::clamp<size_t>(bytesAtOnce / rowSize(rows), 1, rows.height()));
  TiffFront front;
  return makeFront(rows, piece, front) &&
         output.write(front.bytes().data(), front.bytes().size()) && sendStrip(output, rows, piece);
}

}  // namespace

const PictureFormat tiffFormat = {isTiff, describeTiff, decodeTiff, encodeTiff};

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// The interface of a picture format, and what the codec's functions exchange with it: the
// description of a picture in a file, the rows of an image in memory, and the output of a new file.
#pragma once

#include <pxcodec32.h>

#include <array>
#include <cstddef>
#include <cstdint>

#include "palette_row.h"
#include "picture_file.h"

namespace exifkeep {

// The picture in a file as it will be decoded.
struct PictureDescription {
  unsigned width = 0;
  unsigned height = 0;
  unsigned bits = 0;  // 1 (0 is black), 8 or 24
  unsigned dpmX = 0;  // dots per metre, 0 if the file does not specify it
  unsigned dpmY = 0;
  unsigned coloursUsed = 0;  // in a palette picture, else 0
  std::array<RGBQUAD, 256> palette = {};
};

// The rows of an image in memory: row 0 is at the top, colours are blue, green, red.
class PictureRows {
 public:
  PictureRows(const tagLmmInfo& image, CodecProgress progress);

  // Whether the record describes an image.
  bool areValid() const;
  bool fit(const PictureDescription& picture) const;

  unsigned width() const { return static_cast<unsigned>(image_.header->biWidth); }
  unsigned height() const { return static_cast<unsigned>(image_.header->biHeight); }
  unsigned bits() const { return image_.header->biBitCount; }
  unsigned dpmX() const { return static_cast<unsigned>(image_.header->biXPelsPerMeter); }
  unsigned dpmY() const { return static_cast<unsigned>(image_.header->biYPelsPerMeter); }
  unsigned paletteSize() const { return paletteSizeOf(bits()); }
  const RGBQUAD* palette() const { return image_.palette; }
  bool isGrey() const;

  BYTE* row(unsigned y) const { return image_.bits + (height() - 1 - y) * image_.stride; }
  // Converts row y to 24 bits. REQUIRES: an image of 1 or 8 bits.
  void expand(unsigned y, BYTE* bgr) const;

  // Reports how many rows could not be decoded completely.
  void reportLost(unsigned rows) const {
    if (image_.lostRows) *image_.lostRows = rows;
  }
  // Calls the progress function every 64 rows.
  void report(unsigned y) const {
    if (progress_ && y % 64 == 0) progress_(static_cast<int>(y), 0, static_cast<int>(height()));
  }

 private:
  tagLmmInfo image_;
  CodecProgress progress_;
};

// Receives the bytes of a new picture file, from its start to its end.
struct PictureOutput {
  CodecReceive receive;
  void* receiver;

  bool write(const void* bytes, size_t count) const { return receive(receiver, bytes, count) != 0; }
};

struct PictureFormat {
  bool (*recognizes)(const BYTE* start, size_t count);
  // These two are called with the file positioned at its start.
  bool (*describe)(PictureReading& file, PictureDescription& picture);
  bool (*decode)(PictureReading& file, const PictureRows& rows);
  bool (*encode)(const PictureOutput& output, const PictureRows& rows);
};

extern const PictureFormat jpegFormat;
extern const PictureFormat tiffFormat;
extern const PictureFormat pngFormat;

// Swaps the first and the third byte of each pixel. `from` and `to` must not overlap.
void swapRedAndBlue(const BYTE* from, BYTE* to, size_t pixels);

// Whether a file may contain a picture of that size: sides of at most 2^20 pixels (each row takes
// some time), at most PRaster::maxPixels, and above 64 MiB of pixels at most 2048 bytes of pixels
// per byte of the file. The formats' compression does not exceed this in practice (Deflate reaches
// 1032, LZW 1360). So a tiny file is rejected before any large block is allocated.
bool isAcceptable(const PictureDescription& picture, uint64_t fileSize);

// Dots per metre; 0, for unknown, if the resolution is not positive or too large.
unsigned perMetreFromPerInch(double dotsPerInch);

}  // namespace exifkeep

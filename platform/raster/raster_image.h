// SPDX-License-Identifier: MIT
// The image of a PRaster: information header, palette and pixels. The pixels are allocated with
// calloc, so that the pages of a large image are first touched when it is decoded.
#pragma once

#include <praster.h>

#include <array>
#include <cstdlib>
#include <memory>

#include "palette_row.h"

struct FreeBlock {
  void operator()(BYTE* block) const { std::free(block); }
};

struct PRaster::Image {
  BITMAPINFOHEADER header = {};
  std::array<RGBQUAD, 256> colours = {};
  size_t stride = 0;
  unsigned lostRows = 0;
  std::unique_ptr<BYTE[], FreeBlock> bits;

  unsigned width() const { return static_cast<unsigned>(header.biWidth); }
  unsigned height() const { return static_cast<unsigned>(header.biHeight); }
  unsigned depth() const { return header.biBitCount; }
  // Without padding.
  size_t rowBytes() const { return (size_t{width()} * depth() + 7) / 8; }
  unsigned paletteSize() const { return exifkeep::paletteSizeOf(depth()); }
  bool contains(int x, int y) const {
    return x >= 0 && y >= 0 && x < header.biWidth && y < header.biHeight;
  }
  BYTE* row(unsigned y) const { return bits.get() + (height() - 1 - y) * stride; }

  bool sameShapeAs(const Image& other) const {
    return width() == other.width() && height() == other.height() && depth() == other.depth();
  }
};

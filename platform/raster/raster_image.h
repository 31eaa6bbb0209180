// The image of a PRaster: information header, palette and pixels. The pixels are allocated with
// calloc, so that the pages of a large image are first touched when it is decoded.
#pragma once

#include <praster.h>

#include <array>
#include <cstdlib>
#include <memory>

#include "palette_row.h"

struct FreeBlock {
  void operator()(BYTE* block) const noexcept { std::free(block); }
};

struct PRaster::Image {
  BITMAPINFOHEADER header = {};
  std::array<RGBQUAD, 256> colours = {};
  size_t stride = 0;
  unsigned lostRows = 0;
  std::unique_ptr<BYTE[], FreeBlock> bits;

  unsigned width() const noexcept { return static_cast<unsigned>(header.biWidth); }
  unsigned height() const noexcept { return static_cast<unsigned>(header.biHeight); }
  unsigned depth() const noexcept { return header.biBitCount; }
  // Without padding.
  size_t rowBytes() const noexcept { return (size_t{width()} * depth() + 7) / 8; }
  unsigned paletteSize() const noexcept { return exifkeep::paletteSizeOf(depth()); }
  bool contains(int x, int y) const noexcept {
    return x >= 0 && y >= 0 && x < header.biWidth && y < header.biHeight;
  }
  BYTE* row(unsigned y) const noexcept { return bits.get() + (height() - 1 - y) * stride; }

  bool sameShapeAs(const Image& other) const noexcept {
    return width() == other.width() && height() == other.height() && depth() == other.depth();
  }
};

// SPDX-License-Identifier: MIT
// Palettes of 1-bit and 8-bit images and rows that use them, for the raster and the codec.
#pragma once

#include <windows.h>

#include <span>

namespace exifkeep {

constexpr unsigned paletteSizeOf(unsigned bits) {
  return bits <= 8 ? 1u << bits : 0;
}

// The entry of a palette that is a grey ramp, from black to white.
constexpr RGBQUAD greyOf(unsigned index, unsigned entries) {
  const BYTE level = static_cast<BYTE>(index * 255 / (entries - 1));
  return {level, level, level, 0};
}

// Whether all entries are those of a grey ramp. REQUIRES: more than one entry.
inline bool isGreyRamp(std::span<const RGBQUAD> palette) {
  const auto entries = static_cast<unsigned>(palette.size());
  for (unsigned i = 0; i < entries; ++i) {
    const RGBQUAD grey = greyOf(i, entries);
    if (palette[i].rgbBlue != grey.rgbBlue || palette[i].rgbGreen != grey.rgbGreen ||
        palette[i].rgbRed != grey.rgbRed)
      return false;
  }
  return true;
}

// Pixel x of a 1-bit row, whose leftmost pixel is in the highest bit: 0 or 1.
constexpr unsigned bitAt(const BYTE* row, unsigned x) {
  return row[x / 8] >> (7 - x % 8) & 1u;
}

// Converts a row of 1 or 8 bits per pixel to 24 bits (blue, green, red).
inline void expandRow(const BYTE* from, unsigned width, unsigned bits, const RGBQUAD* palette,
                      BYTE* bgr) {
  for (unsigned x = 0; x < width; ++x, bgr += 3) {
    const RGBQUAD& colour = palette[bits == 8 ? from[x] : bitAt(from, x)];
    bgr[0] = colour.rgbBlue;
    bgr[1] = colour.rgbGreen;
    bgr[2] = colour.rgbRed;
  }
}

}  // namespace exifkeep

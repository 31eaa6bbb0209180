// Image rows, plausibility of sizes, and resolution units, as all formats need them.
#include "picture_format.h"

#include <cmath>
#include <cstring>

namespace exifkeep {

PictureRows::PictureRows(const tagLmmInfo& image, CodecProgress progress) noexcept
    : image_(image), progress_(progress) {}

bool PictureRows::areValid() const noexcept {
  const BITMAPINFOHEADER* header = image_.header;
  if (!header || !image_.bits || header->biWidth <= 0 || header->biHeight <= 0) return false;
  if (bits() == 24) return true;
  return (bits() == 1 || bits() == 8) && image_.palette;
}

bool PictureRows::fit(const PictureDescription& picture) const noexcept {
  return width() == picture.width && height() == picture.height && bits() == picture.bits;
}

bool PictureRows::isGrey() const noexcept {
  for (unsigned i = 0; i < paletteSize(); ++i) {
    const RGBQUAD& colour = image_.palette[i];
    const unsigned level = i * 255 / (paletteSize() - 1);
    if (colour.rgbRed != level || colour.rgbGreen != level || colour.rgbBlue != level) return false;
  }
  return bits() <= 8;
}

void PictureRows::expand(unsigned y, BYTE* bgr) const noexcept {
  const BYTE* from = row(y);
  if (bits() == 24) {
    std::memcpy(bgr, from, size_t{width()} * 3);
    return;
  }
  for (unsigned x = 0; x < width(); ++x, bgr += 3) {
    const unsigned index = bits() == 8 ? from[x] : from[x / 8] >> (7 - x % 8) & 1;
    const RGBQUAD& colour = image_.palette[index];
    bgr[0] = colour.rgbBlue;
    bgr[1] = colour.rgbGreen;
    bgr[2] = colour.rgbRed;
  }
}

bool isAcceptable(const PictureDescription& picture, uint64_t fileSize) noexcept {
  constexpr unsigned longestSide = 1 << 20;
  const uint64_t width = picture.width, height = picture.height;
  if (width == 0 || width > longestSide || height == 0 || height > longestSide) return false;
  if (width * height > PRaster::maxPixels) return false;
  const uint64_t bytes = (width * picture.bits + 31) / 32 * 4 * height;
  return bytes <= (uint64_t{64} << 20) || bytes / 2048 <= fileSize;
}

unsigned perMetreFromPerInch(double dotsPerInch) noexcept {
  const double dotsPerMetre = dotsPerInch / 0.0254;
  return dotsPerMetre >= 0.5 && dotsPerMetre < 1e9 ? static_cast<unsigned>(dotsPerMetre + 0.5) : 0;
}

unsigned perInchFromPerMetre(unsigned dotsPerMetre) noexcept {
  return static_cast<unsigned>((uint64_t{dotsPerMetre} * 254 + 5000) / 10000);
}

}  // namespace exifkeep

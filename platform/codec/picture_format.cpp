// SPDX-License-Identifier: MIT
#include "picture_format.h"

namespace exifkeep {

PictureRows::PictureRows(const tagLmmInfo& image, CodecProgress progress)
    : image_(image), progress_(progress) {}

bool PictureRows::areValid() const {
  const BITMAPINFOHEADER* header = image_.header;
  if (!header || !image_.bits || header->biWidth <= 0 || header->biHeight <= 0) return false;
  if (bits() == 24) return true;
  return (bits() == 1 || bits() == 8) && image_.palette;
}

bool PictureRows::fit(const PictureDescription& picture) const {
  return width() == picture.width && height() == picture.height && bits() == picture.bits;
}

bool PictureRows::isGrey() const {
  return bits() <= 8 && isGreyRamp({image_.palette, paletteSize()});
}

void PictureRows::expand(unsigned y, BYTE* bgr) const {
  expandRow(row(y), width(), bits(), image_.palette, bgr);
}

bool isAcceptable(const PictureDescription& picture, uint64_t fileSize) {
  constexpr unsigned maxSide = 1 << 20;
  const uint64_t width = picture.width, height = picture.height;
  if (width == 0 || width > maxSide || height == 0 || height > maxSide) return false;
  if (width * height > PRaster::maxPixels) return false;
  const uint64_t bytes = (width * picture.bits + 31) / 32 * 4 * height;
  return bytes <= (uint64_t{64} << 20) || bytes / 2048 <= fileSize;
}

unsigned perMetreFromPerInch(double dotsPerInch) {
  const double dotsPerMetre = dotsPerInch / 0.0254;
  return dotsPerMetre >= 0.5 && dotsPerMetre < 1e9 ? static_cast<unsigned>(dotsPerMetre + 0.5) : 0;
}

}  // namespace exifkeep

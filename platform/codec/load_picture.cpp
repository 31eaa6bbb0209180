// SPDX-License-Identifier: MIT
#include <load_picture.h>
#include <pxcodec32.h>

namespace exifkeep {
namespace {

bool readPixels(const char* path, PRaster& image) {
  tagLmmInfo memory;
  image.GetLmmInfo(memory);
  return AllReadDIBImg(path, &memory, image.GetLmmOffset(), nullptr) != 0;
}

}  // namespace

bool loadPicture(const char* path, PRaster& image) noexcept {
  image.DeleteImage();
  BITMAPINFOHEADER header = {};
  if (!AllReadHeader(path, &header)) return false;
  if (!image.CreateImage(PRaster::GetImageType(header.biBitCount, 0),
                         static_cast<unsigned>(header.biWidth),
                         static_cast<unsigned>(header.biHeight), 0, header.biClrUsed,
                         static_cast<unsigned>(header.biXPelsPerMeter),
                         static_cast<unsigned>(header.biYPelsPerMeter)))
    return false;
  if (const HPALETTE palette = AllReadPalette(path)) image.SetPalette(palette, 1);
  if (readPixels(path, image)) return true;
  image.DeleteImage();
  return false;
}

}  // namespace exifkeep

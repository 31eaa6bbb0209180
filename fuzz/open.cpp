// SPDX-License-Identifier: MIT
// Opens a picture: its image, its thumbnail, or both. A file without Exif data is decoded only by
// the codec.
#include <exifkeep/exifkeep.h>

#include <pxcodec32.h>

#include "budget.h"
#include "imageio/image_codec_bridge.h"
#include "input.h"

using namespace exifkeep::fuzz;

namespace {

// Reads every pixel to check that the decoded image is usable.
void use(const PRaster& image) {
  if (image.IsEmpty()) return;
  PRaster small;
  require(small.CreateImage(image.GetImageType(), 3, 2) == 1, "an image of no type");
  require(small.RescaleImage(image) == 1, "an image that cannot be scaled");
}

// The number of pixels that the file claims, decodable or not. An undecodable thumbnail counts as
// one of maximum size.
uint64_t pixelsOf(const char* path, bool isExif, const PRaster& thumbnail) {
  BITMAPINFOHEADER header = {};
  AllReadHeader(path, &header);
  constexpr uint64_t maxThumbnailPixels = uint64_t{1} << 22;
  const uint64_t pixels = uint64_t(header.biWidth) * uint64_t(header.biHeight);
  if (!isExif) return pixels;
  return pixels +
         (thumbnail.IsEmpty() ? maxThumbnailPixels : thumbnail.width() * thumbnail.height());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const PictureInput input(data, size);
  const char* path = input.path().c_str();
  const Budget budget(input.bytes().size());
  const int isExif = IsExifFile(path);
  PRaster image, thumbnail;
  if (!isExif) {
    if (const auto decoded = exifkeep::ImageCodecBridge().loadImageFile(path))
      image.Attach(decoded->Detach());
  } else if (input.choice() % 2 == 0) {
    require(OpenExifFile(path, &image, &thumbnail) == isExif,
            "opened a file that is not an Exif file");
  } else {
    require(OpenExifFile(path, nullptr, &thumbnail) == isExif,
            "a thumbnail of a file that is not an Exif file");
    require(OpenExifFile(path, &image, nullptr) == isExif,
            "an image of a file that is not an Exif file");
  }
  require(image.lostRows() == 0 || image.lostRows() <= image.height(), "more rows lost than all");
  use(image);
  use(thumbnail);
  budget.check(pixelsOf(path, isExif, thumbnail));
  return 0;
}

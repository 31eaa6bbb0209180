// SPDX-License-Identifier: MIT
#include "write/thumbnail.h"

#include <windows.h>

#include <algorithm>

#include "imageio/praster_block.h"

namespace exifkeep {

namespace {

BYTE brightness(const RGBQUAD& colour) {
  return std::max({colour.rgbRed, colour.rgbGreen, colour.rgbBlue});
}

// Returns the black entry of the target's palette, which is a copy of the source's. If there is
// none, makes an entry black that no pixel of the source uses; if all are used, takes the darkest.
size_t blackEntry(const PRaster& source, PRaster& target) {
  const size_t entries = size_t{1} << target.bitsPerPixel();
  RGBQUAD* palette = target.palette();
  RGBQUAD* darkest = std::ranges::min_element(palette, palette + entries, {}, brightness);
  if (brightness(*darkest) == 0) return static_cast<size_t>(darkest - palette);
  bool isUsed[256] = {};
  for (unsigned y = 0; y < source.GetImageHeight(); ++y)
    for (unsigned x = 0; x < source.GetImageWidth(); ++x)
      isUsed[source.GetPixel(static_cast<int>(x), static_cast<int>(y)) % entries] = true;
  const bool* unused = std::find(isUsed, isUsed + entries, false);
  if (unused == isUsed + entries) return static_cast<size_t>(darkest - palette);
  palette[unused - isUsed] = {};
  return static_cast<size_t>(unused - isUsed);
}

}  // namespace

bool makeThumbnail(const PRaster& source, PRaster& thumbnail) {
  return thumbnail.CreateImage(source.GetImageType(), thumbnailWidth, thumbnailHeight) &&
         fitIntoThumbnail(source, thumbnail);
}

bool fitIntoThumbnail(const PRaster& source, PRaster& thumbnail) {
  const unsigned sourceWidth = source.GetImageWidth(), sourceHeight = source.GetImageHeight();
  const unsigned width = thumbnail.GetImageWidth(), height = thumbnail.GetImageHeight();
  // Single precision, so that thumbnails keep the sizes they have always had.
  const auto ratioX = static_cast<float>(static_cast<double>(sourceWidth) / width);
  const auto ratioY = static_cast<float>(static_cast<double>(sourceHeight) / height);
  if (ratioX == ratioY) return thumbnail.RescaleImage(source);
  if (sourceWidth <= width && sourceHeight <= height) {
    centerImage(source, thumbnail);
    return true;
  }
  const double ratio = std::max(ratioX, ratioY);
  const auto scaled = [&](unsigned size) {
    return std::max(1u, static_cast<unsigned>(static_cast<double>(size) / ratio));
  };
  PRasterBlock scratch;
  if (!scratch.CreateImage(source.GetImageType(), scaled(sourceWidth), scaled(sourceHeight)) ||
      !scratch.RescaleImage(source))
    return false;
  centerImage(scratch, thumbnail);
  return true;
}

void centerImage(const PRaster& source, PRaster& target) {
  // Levels are colours only through their palette.
  if (source.palette()) {
    std::copy_n(source.palette(), size_t{1} << source.bitsPerPixel(), target.palette());
    target.Clear(blackEntry(source, target));
  } else {
    target.Clear(0);
  }
  const unsigned left = (target.GetImageWidth() - source.GetImageWidth()) / 2;
  const unsigned top = (target.GetImageHeight() - source.GetImageHeight()) / 2;
  for (unsigned y = 0; y < source.GetImageHeight(); ++y)
    for (unsigned x = 0; x < source.GetImageWidth(); ++x)
      target.SetPixel(static_cast<int>(left + x), static_cast<int>(top + y),
                      source.GetPixel(static_cast<int>(x), static_cast<int>(y)));
}

bool EncodedThumbnail::encode(const ImageCodecBridge& codec, const PRaster& picture,
                              PRaster* hostThumbnail) {
  if (!isMissing(hostThumbnail)) {
    encode(codec, *hostThumbnail);
    isTaken_ = true;
    return true;
  }
  PRasterBlock made;
  if (!makeThumbnail(picture, made)) return false;
  isTaken_ = encode(codec, made);
  return isTaken_ || GetLastError() == ERROR_SUCCESS;
}

bool EncodedThumbnail::encode(const ImageCodecBridge& codec, PRaster& image) {
  width_ = image.GetImageWidth();
  height_ = image.GetImageHeight();
  file_.emplace(codec, image, name_);
  return !file_->parts().empty();
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
#include "tiff/saved_pixels.h"

#include <algorithm>

#include "write/thumbnail.h"

namespace exifkeep {

namespace {

// TIFF 6.0, section 6: three samples of 8 bits, not compressed, interleaved. Sets values only; they
// are not used unless their flags are set.
void describeRgb(ImageIfdRecord& record, unsigned width, unsigned height) {
  constexpr uint16_t bits = 8, uncompressed = 1, samples = 3, chunky = 1;
  std::ranges::fill(record.bitsPerSample, bits);
  record.compression = uncompressed;
  record.samplesPerPixel = samples;
  record.planarConfiguration = chunky;
  record.imageWidth = width;
  record.imageLength = height;
}

// TIFF 6.0, section 20: the sample values of black and white in RGB pixels. Those of YCbCr pixels
// differ.
void describeRange(ImageIfdRecord& record) {
  constexpr uint32_t rgb = 2;
  if (record.hasPhotometricInterpretation && record.photometricInterpretation == rgb) return;
  for (int i = 0; i < 6; ++i) record.referenceBlackWhite[i] = {i % 2 ? 255u : 0u, 1};
}

}  // namespace

void describeSavedPixels(ExifMetadata& metadata, const PRaster& picture,
                         const PRaster* hostThumbnail) {
  ImageIfdRecord& primary = metadata.primary;
  describeRgb(primary, picture.GetImageWidth(), picture.GetImageHeight());
  describeRange(primary);
  primary.hasSamplesPerPixel = primary.hasBitsPerSample = primary.hasCompression =
      primary.hasImageWidth = primary.hasImageLength = 1;

  if (hostThumbnail && !hostThumbnail->IsEmpty())
    describeRgb(metadata.thumbnail, hostThumbnail->GetImageWidth(),
                hostThumbnail->GetImageHeight());
  else
    describeRgb(metadata.thumbnail, thumbnailWidth, thumbnailHeight);
}

}  // namespace exifkeep

#include "tiff/true_records.h"

#include <algorithm>

#include "write/thumbnail.h"

namespace exifkeep {

namespace {

// TIFF 6.0, section 6: three samples of 8 bits, not compressed, together in each pixel. Without
// their flags the values mean nothing.
void describeRgb(ImageIfdRecord& record, unsigned width, unsigned height) {
  constexpr uint16_t bits = 8, uncompressed = 1, samples = 3, chunky = 1;
  std::ranges::fill(record.bitsPerSample, bits);
  record.compression = uncompressed;
  record.samplesPerPixel = samples;
  record.planarConfiguration = chunky;
  record.imageWidth = width;
  record.imageLength = height;
}

}  // namespace

void describeTruly(ExifMetadata& metadata, const PRaster& picture, const PRaster* hostThumbnail) {
  ImageIfdRecord& primary = metadata.primary;
  // A record that describes its samples gets no entry more: intended, what it lacks it has always
  // lacked.
  if (!primary.hasSamplesPerPixel)
    primary.hasSamplesPerPixel = primary.hasBitsPerSample = primary.hasCompression =
        primary.hasImageWidth = primary.hasImageLength = 1;
  describeRgb(primary, picture.GetImageWidth(), picture.GetImageHeight());

  if (hostThumbnail && !hostThumbnail->IsEmpty())
    describeRgb(metadata.thumbnail, hostThumbnail->GetImageWidth(),
                hostThumbnail->GetImageHeight());
  else
    describeRgb(metadata.thumbnail, thumbnailWidth, thumbnailHeight);
}

}  // namespace exifkeep

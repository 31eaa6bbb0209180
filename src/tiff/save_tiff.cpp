// SPDX-License-Identifier: MIT
#include "tiff/save_tiff.h"

#include <array>
#include <cstring>
#include <vector>

#include "imageio/praster_block.h"
#include "system/delivery.h"
#include "tiff/codec_tiff.h"
#include "tiff/saved_pixels.h"
#include "tiff/tiff_block.h"
#include "write/encoded_picture.h"

namespace exifkeep {

namespace {

// Delivers the front part followed by the strip, whose position in the codec's file is `strip`.
bool deliverPicture(const ImageCodecBridge& codec, PRaster& picture, const char* destination,
                    const FrontPart& front, uint32_t strip) {
  const BlockLock lock(front.block);
  const uint64_t size = stripSize(picture.GetImageWidth(), picture.GetImageHeight());
  const StreamedPicture pixels(codec, picture, destination, strip, size);
  return lock.bytes() &&
         deliver(destination, std::array{Piece({lock.bytes(), front.size}), Piece(pixels)});
}

// Keeps the caller's Software, even if it is empty, and takes all other fields from the codec's
// file. False if any field is missing without which nobody could open the picture.
bool takeCodecFields(ExifReader& reader, ExifFile& saved, ImageIfdRecord& primary) {
  char software[sizeof primary.software];
  std::memcpy(software, primary.software, sizeof software);
  readSavedTiffDirectory(reader, saved, primary);
  std::memcpy(primary.software, software, sizeof software);
  primary.hasSoftware = 1;
  return primary.hasImageWidth && primary.hasImageLength && primary.hasBitsPerSample &&
         primary.hasCompression && primary.hasSamplesPerPixel;
}

}  // namespace

bool saveTiffWithRecords(ExifReader& reader, const char* destination, PRaster* picture,
                         PRaster* thumbnail, ExifMetadata& metadata) {
  if (isMissing(picture)) return false;
  describeSavedPixels(metadata, *picture, thumbnail);
  return saveExifTiff(reader, destination, picture, thumbnail, metadata);
}

bool saveExifTiff(ExifReader& reader, const char* destination, PRaster* picture, PRaster* thumbnail,
                  ExifMetadata& metadata) {
  if (isMissing(picture)) return false;
  const FrontPart front = buildTiffBlockFromRecords(reader, *picture, thumbnail, metadata);
  if (!front) return false;
  const std::vector<uint8_t> beginning = encodedBeginning(reader.codec(), *picture, destination);
  ExifFile encoded(beginning);
  const auto strip = locateStrip(encoded);
  return strip && deliverPicture(reader.codec(), *picture, destination, front, *strip);
}

bool saveNewExifTiff(ExifReader& reader, const char* destination, PRaster* picture,
                     PRaster* thumbnail, ExifIfdRecord& exif, ImageIfdRecord& primary) {
  if (isMissing(picture)) return false;
  const std::vector<uint8_t> beginning = encodedBeginning(reader.codec(), *picture, destination);
  ExifFile encoded(beginning);
  const auto strip = locateStrip(encoded);
  if (!strip || !takeCodecFields(reader, encoded, primary)) return false;
  const FrontPart front = buildNewTiffBlock(reader, *picture, thumbnail, exif, primary);
  return front && deliverPicture(reader.codec(), *picture, destination, front, *strip);
}

}  // namespace exifkeep

#include "tiff/save_tiff.h"

#include <algorithm>
#include <cstring>

#include "imageio/praster_block.h"
#include "system/delivery.h"
#include "tiff/codec_tiff.h"
#include "tiff/saved_pixels.h"
#include "tiff/tiff_block.h"
#include "write/encoded_picture.h"

namespace exifkeep {

namespace {

// Delivers the front part followed by the strip of the codec's file. If the codec's file is longer
// than that, the rest of it follows too. Intended: saved files have always ended so.
bool deliverWithStrip(const FrontPart& front, const char* destination, const char* encoded,
                      uint64_t strip, uint64_t stripSize) {
  DiskFile file = DiskFile::openForReading(encoded);
  const BlockLock lock(front.block);
  if (!lock.bytes() || !file.isOpen()) return false;
  const uint64_t length = std::min(front.size + stripSize, file.size());
  const Piece pieces[] = {Piece({lock.bytes(), front.size}),
                          {file, strip, stripSize},
                          {file, length, file.size() - length}};
  return deliver(destination, pieces);
}

uint64_t stripSizeOf(const PRaster& picture) {
  return stripSize(picture.GetImageWidth(), picture.GetImageHeight());
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
  const EncodedPicture encoded(reader.codec(), *picture, destination);
  ExifFile saved(encoded.path());
  const uint64_t size = stripSizeOf(*picture);
  const auto strip = locateStrip(saved, size);
  // The strip must be the end of the file.
  if (!strip || saved.size() != *strip + size) return false;
  return deliverWithStrip(front, destination, encoded.path(), *strip, size);
}

bool saveNewExifTiff(ExifReader& reader, const char* destination, PRaster* picture,
                     PRaster* thumbnail, ExifIfdRecord& exif, ImageIfdRecord& primary) {
  if (isMissing(picture)) return false;
  const EncodedPicture encoded(reader.codec(), *picture, destination);
  ExifFile saved(encoded.path());
  const uint64_t size = stripSizeOf(*picture);
  const auto strip = locateStrip(saved, size);
  if (!strip || !takeCodecFields(reader, saved, primary)) return false;
  const FrontPart front = buildNewTiffBlock(reader, *picture, thumbnail, exif, primary);
  return front && deliverWithStrip(front, destination, encoded.path(), *strip, size);
}

}  // namespace exifkeep

#include "tiff/save_tiff.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

#include "imageio/praster_block.h"
#include "system/disk_file.h"
#include "tiff/codec_tiff.h"
#include "tiff/tiff_block.h"
#include "tiff/true_records.h"

namespace exifkeep {

namespace {

// Moves bytes within a file, a piece at a time. The piece farthest along the way goes first, so
// that no byte is overwritten before it was read.
bool moveBytes(DiskFile& file, uint64_t from, uint64_t to, uint64_t size) {
  constexpr uint64_t largestPiece = 1 << 22;
  if (from == to) return true;
  const GlobalBlock buffer(static_cast<size_t>(std::min(size, largestPiece)));
  const BlockLock lock(buffer);
  if (!lock.bytes()) return false;
  for (uint64_t moved = 0; moved < size;) {
    const uint64_t piece = std::min(size - moved, largestPiece);
    const uint64_t at = to > from ? size - moved - piece : moved;
    const auto length = static_cast<size_t>(piece);
    if (file.readAt(from + at, lock.bytes(), length) != length) return false;
    if (!file.writeAt(to + at, lock.bytes(), length)) return false;
    moved += piece;
  }
  return true;
}

// Moves the strip behind the front part and writes the front part. The file is not truncated:
// intended, what the codec's file held further on stays at its end.
bool replaceFront(const char* path, const FrontPart& front, uint64_t strip, uint64_t size) {
  DiskFile file = DiskFile::openForWriting(path);
  const BlockLock lock(front.block);
  return lock.bytes() && moveBytes(file, strip, front.size, size) &&
         file.writeAt(0, lock.bytes(), front.size) && file.close();
}

// Puts the front part that `buildFront` makes into the codec's file. `buildFront` is given the file
// and the position where its strip ends.
template <class BuildFront>
bool rewrite(const char* path, const PRaster& picture, BuildFront buildFront) {
  const uint64_t size = stripSize(picture.GetImageWidth(), picture.GetImageHeight());
  ExifFile saved(path);
  const auto strip = locateStrip(saved, size);
  if (!strip) return false;
  const FrontPart front = buildFront(saved, *strip + size);
  return front && replaceFront(path, front, *strip, size);
}

template <class BuildFront>
bool saveTiff(ExifReader& reader, const char* destination, PRaster* picture,
              BuildFront buildFront) {
  if (isMissing(picture) || !reader.codec->saveImageFile(destination, *picture)) return false;
  if (rewrite(destination, *picture, buildFront)) return true;
  DeleteFileA(destination);
  return false;
}

// The caller's Software, empty or not, always goes along; all else is the codec's. False when the
// file did not yield all that describes the strip: nobody could open the picture.
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
  describeTruly(metadata, *picture, thumbnail);
  return saveExifTiff(reader, destination, picture, thumbnail, metadata);
}

bool saveExifTiff(ExifReader& reader, const char* destination, PRaster* picture, PRaster* thumbnail,
                  ExifMetadata& metadata) {
  return saveTiff(reader, destination, picture, [&](ExifFile& saved, uint64_t stripEnd) {
    // What is kept are the file's last bytes.
    if (saved.size() != stripEnd) return FrontPart();
    return buildTiffBlockFromRecords(reader, *picture, thumbnail, &metadata.exif, &metadata.primary,
                                     &metadata.thumbnail, &metadata.gps);
  });
}

bool saveNewExifTiff(ExifReader& reader, const char* destination, PRaster* picture,
                     PRaster* thumbnail, ExifIfdRecord& exif, ImageIfdRecord& primary) {
  return saveTiff(reader, destination, picture, [&](ExifFile& saved, uint64_t) {
    if (!takeCodecFields(reader, saved, primary)) return FrontPart();
    return buildNewTiffBlock(reader, *picture, thumbnail, exif, primary);
  });
}

}  // namespace exifkeep

#include "write/save_jpeg.h"

#include <windows.h>

#include "imageio/praster_block.h"
#include "system/disk_file.h"
#include "write/jpeg_segment.h"
#include "write/jpeg_stream.h"

namespace exifkeep {

namespace {

// Compacts the codec's file and puts the segment that `buildSegment` makes behind SOI.
template <class BuildSegment>
bool spliceSegment(const char* path, BuildSegment buildSegment) {
  DiskFile file = DiskFile::openForWriting(path);
  JpegStream stream(file);
  if (!stream.isLoaded()) return false;
  stream.compact();
  const GlobalBlock segment = buildSegment();
  const BlockLock lock(segment);
  if (!lock.bytes()) return false;
  return stream.writeWithSegment(file, {lock.bytes(), segmentSize(lock.bytes())}) && file.close();
}

template <class BuildSegment>
bool saveJpeg(ExifReader& reader, const char* destination, bool withExif, PRaster* picture,
              BuildSegment buildSegment) {
  if (isMissing(picture) || !reader.codec->saveImageFile(destination, *picture)) return false;
  if (!withExif) return compactJpegStream(destination);
  if (spliceSegment(destination, buildSegment)) return true;
  DeleteFileA(destination);
  return false;
}

}  // namespace

bool saveJpegWithRecords(ExifReader& reader, const char* destination, bool withExif,
                         PRaster* picture, PRaster* thumbnail, const ExifMetadata& metadata) {
  return saveJpeg(reader, destination, withExif, picture, [&] {
    return buildSegmentFromRecords(*reader.codec, *picture, thumbnail, &metadata.exif,
                                   &metadata.primary, &metadata.thumbnail, &metadata.gps);
  });
}

bool saveJpegWithNewExif(ExifReader& reader, const char* destination, bool withExif,
                         PRaster* picture, PRaster* thumbnail, const ExifIfdRecord& exif,
                         const ImageIfdRecord& primary) {
  return saveJpeg(reader, destination, withExif, picture, [&] {
    return buildSegmentWithDefaults(*reader.codec, *picture, thumbnail, exif, primary);
  });
}

bool savePlain(ExifReader& reader, const char* destination, PRaster* picture) {
  return !isMissing(picture) && reader.codec->saveImageFile(destination, *picture);
}

}  // namespace exifkeep

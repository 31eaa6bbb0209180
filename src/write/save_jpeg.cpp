#include "write/save_jpeg.h"

#include "imageio/praster_block.h"
#include "system/delivery.h"
#include "write/encoded_picture.h"
#include "write/jpeg_segment.h"
#include "write/jpeg_stream.h"

namespace exifkeep {

namespace {

bool saveWithSegment(ExifReader& reader, const char* destination, PRaster& picture,
                     const GlobalBlock& segment) {
  const BlockLock lock(segment);
  if (!lock.bytes()) return false;
  const EncodedPicture encoded(reader.codec(), picture, destination);
  DiskFile file = DiskFile::openForReading(encoded.path());
  JpegStream stream(file);
  if (!stream.isLoaded()) return false;
  stream.compact();
  stream.insert({lock.bytes(), segmentSize(lock.bytes())});
  return deliver(destination, stream.pieces());
}

}  // namespace

bool saveJpegWithRecords(ExifReader& reader, const char* destination, PRaster* picture,
                         PRaster* thumbnail, const ExifMetadata& metadata) {
  if (isMissing(picture)) return false;
  const GlobalBlock segment = buildSegmentFromRecords(reader.codec(), *picture, thumbnail, metadata);
  return segment && saveWithSegment(reader, destination, *picture, segment);
}

bool saveJpegWithNewExif(ExifReader& reader, const char* destination, PRaster* picture,
                         PRaster* thumbnail, const ExifIfdRecord& exif,
                         const ImageIfdRecord& primary) {
  if (isMissing(picture)) return false;
  const GlobalBlock segment =
      buildSegmentWithDefaults(reader.codec(), *picture, thumbnail, exif, primary);
  return segment && saveWithSegment(reader, destination, *picture, segment);
}

bool savePlain(ExifReader& reader, const char* destination, PRaster* picture) {
  if (isMissing(picture)) return false;
  const EncodedPicture encoded(reader.codec(), *picture, destination);
  DiskFile file = DiskFile::openForReading(encoded.path());
  const Piece whole[] = {{file, 0, file.size()}};
  return file.isOpen() && deliver(destination, whole);
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
#include "write/save_jpeg.h"

#include <array>
#include <vector>

#include "imageio/praster_block.h"
#include "system/delivery.h"
#include "system/path.h"
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
  JpegStream stream = compactJpegStream(encoded);
  if (stream.isEmpty()) return false;
  stream.insert({lock.bytes(), segmentSize(lock.bytes())});
  return deliver(destination, stream.pieces());
}

}  // namespace

bool saveJpegWithRecords(ExifReader& reader, const char* destination, PRaster* picture,
                         PRaster* thumbnail, const ExifMetadata& metadata) {
  if (isMissing(picture)) return false;
  const GlobalBlock segment =
      buildSegmentFromRecords(reader.codec(), *picture, thumbnail, metadata);
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
  if (isTiffName(destination)) {
    const StreamedPicture streamed(reader.codec(), *picture, destination);
    return deliver(destination, std::array{Piece(streamed)});
  }
  const EncodedPicture encoded(reader.codec(), *picture, destination);
  const std::vector<Piece> pieces(encoded.parts().begin(), encoded.parts().end());
  return !pieces.empty() && deliver(destination, pieces);
}

}  // namespace exifkeep

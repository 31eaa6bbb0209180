#include "write/metadata_block.h"

#include "write/jpeg_rows.h"

namespace exifkeep {

void MetadataWriter::writePrimary(OutputRows rows, const ImageIfdRecord& primary,
                                  const RowContext& context) {
  primary_ = writer_.writeDirectory(rows, &primary, context);
}

void MetadataWriter::writeExif(OutputRows rows, const ExifIfdRecord& exif,
                               const RowContext& context, bool hasInteroperability) {
  const uint32_t directory = writer_.writeDirectory(rows, &exif, context);
  point(primary_, tag::exifIfdPointer, directory);
  if (!hasInteroperability) return;
  point(directory, tag::interoperabilityIfdPointer,
        writer_.writeDirectory(interoperabilityRows, nullptr, context));
}

void MetadataWriter::writeGps(const GpsIfdRecord& gps, const RowContext& context) {
  point(primary_, tag::gpsIfdPointer, writer_.writeDirectory(gpsRows, &gps, context));
}

void MetadataWriter::writeThumbnail(OutputRows rows, const ImageIfdRecord* record,
                                    const RowContext& context) {
  thumbnail_ = writer_.writeDirectory(rows, record, context);
  writer_.setNextDirectory(primary_, thumbnail_);
}

void MetadataWriter::endThumbnail(uint16_t positionTag, uint32_t length) {
  point(thumbnail_, positionTag, writer_.length());
  writer_.advance(length);
}

}  // namespace exifkeep

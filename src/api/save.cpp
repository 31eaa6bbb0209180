#include "api/save.h"

#include "imageio/path_extension.h"
#include "probe/exif_reader.h"
#include "read/read_metadata.h"
#include "tiff/save_tiff.h"
#include "write/processing.h"
#include "write/save_jpeg.h"

namespace exifkeep {

namespace {

void resetRecords(ExifReader& reader, ExifMetadata& metadata) {
  resetExifIfdRecord(reader, metadata.exif);
  resetImageIfdRecord(reader, metadata.primary);
  resetImageIfdRecord(reader, metadata.thumbnail);
  resetGpsIfdRecord(metadata.gps);
}

}  // namespace

bool saveWithMetadata(const char* source, const char* destination, int processCode, PRaster* image,
                      PRaster* thumbnail) {
  ExifReader reader;
  if (!reader.probeFile(source)) return savePlain(reader, destination, image);
  ExifMetadata metadata;
  resetRecords(reader, metadata);
  // The result is not asked for: intended, what could be read goes along.
  readExifMetadata(reader, source, metadata.exif, metadata.primary, &metadata.thumbnail,
                   &metadata.gps);
  applyProcessing(processCode, image, &metadata.exif, &metadata.primary);
  // Metadata stays within its kind of file: a JPEG saved as TIFF, or the other way, is plain.
  if (isTiffName(destination) && isTiffName(source))
    return saveTiffWithRecords(reader, destination, image, thumbnail, metadata);
  if (isJpegName(destination) && isJpegName(source))
    return saveJpegWithRecords(reader, destination, true, image, thumbnail, metadata);
  return savePlain(reader, destination, image);
}

}  // namespace exifkeep

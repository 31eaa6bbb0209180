#include "api/save.h"

#include "probe/exif_reader.h"
#include "read/read_metadata.h"
#include "system/path.h"
#include "system/pending_file.h"
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

// The extensions decide: metadata stays within its kind of file, and a JPEG saved as TIFF, or the
// other way, is plain.
bool saveTo(const char* destination, const char* source, int processCode, PRaster* image,
            PRaster* thumbnail) {
  ExifReader reader;
  if (!reader.probeFile(source)) return savePlain(reader, destination, image);
  ExifMetadata metadata;
  resetRecords(reader, metadata);
  // The result is not asked for: intended, what could be read goes along.
  readExifMetadata(reader, source, metadata);
  applyProcessing(processCode, image, &metadata.exif, &metadata.primary);
  if (isTiffName(destination) && isTiffName(source))
    return saveTiffWithRecords(reader, destination, image, thumbnail, metadata);
  if (isJpegName(destination) && isJpegName(source))
    return saveJpegWithRecords(reader, destination, true, image, thumbnail, metadata);
  return savePlain(reader, destination, image);
}

}  // namespace

bool saveWithMetadata(const char* source, const char* destination, int processCode, PRaster* image,
                      PRaster* thumbnail) {
  PendingFile file(destination);
  return saveTo(file.path(), source, processCode, image, thumbnail) && file.commit();
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
#include "api/save.h"

#include "read/read_source.h"
#include "system/path.h"
#include "tiff/save_tiff.h"
#include "write/processing.h"
#include "write/save_jpeg.h"

namespace exifkeep {

// The names decide: metadata is not converted, so a JPEG file saved as TIFF, or the reverse, is
// saved without.
bool saveWithMetadata(const char* source, const char* destination, int processCode, PRaster* image,
                      PRaster* thumbnail) {
  ExifReader reader;
  ExifMetadata metadata;
  const Source found = readSource(reader, source, metadata);
  if (found == Source::unreadable) return false;
  if (found == Source::withoutExif) return savePlain(reader, destination, image);

  applyProcessing(processCode, *image, metadata);
  if (isTiffName(destination) && isTiffName(source))
    return saveTiffWithRecords(reader, destination, image, thumbnail, metadata);
  if (isJpegName(destination) && isJpegName(source))
    return saveJpegWithRecords(reader, destination, image, thumbnail, metadata);
  return savePlain(reader, destination, image);
}

}  // namespace exifkeep

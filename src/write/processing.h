// What a named kind of processing does to the metadata that is saved with its result.
#pragma once

#include <praster.h>

#include "read/records.h"

namespace exifkeep {

// Adjusts the records for process codes 2 to 6 and leaves them alone for any other. `picture` may
// be null: the pixel dimensions then stay. Either record may be null, too.
void applyProcessing(int processCode, const PRaster* picture, ExifIfdRecord* exif,
                     ImageIfdRecord* primary);

}  // namespace exifkeep

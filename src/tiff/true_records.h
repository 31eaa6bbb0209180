// The step before a picture is saved as TIFF with its source's metadata. The writer copies what the
// records say of the pixels; a source that was compressed, grey or a JPEG file would have it
// describe the uncompressed RGB strip falsely, and no reader could open the file.
#pragma once

#include <praster.h>

#include "read/records.h"

namespace exifkeep {

// Makes the fields of `primary` and `thumbnail` that describe pixels those of the strips that will
// be saved, and adds to `primary` those that no reader can do without. Records of a plain RGB
// source stay as they are.
void describeTruly(ExifMetadata& metadata, const PRaster& picture, const PRaster* hostThumbnail);

}  // namespace exifkeep

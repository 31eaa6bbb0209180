// SPDX-License-Identifier: MIT
// Adjusts the records before a picture is saved as TIFF with its source's metadata. The writer
// copies the fields that describe pixels. If the source was compressed, grey or a JPEG file, they
// would not match the uncompressed RGB strip, and no reader could open the file.
#pragma once

#include <praster.h>

#include "read/records.h"

namespace exifkeep {

// Makes the fields of `primary` and `thumbnail` describe the strips that will be saved, and adds
// the fields that every reader needs to `primary`. Does not change the records of a plain RGB
// source.
void describeSavedPixels(ExifMetadata& metadata, const PRaster& picture,
                         const PRaster* hostThumbnail);

}  // namespace exifkeep

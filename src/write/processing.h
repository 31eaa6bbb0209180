// SPDX-License-Identifier: MIT
// Adjusts the metadata of a picture to how it was processed.
#pragma once

#include <praster.h>

#include "read/records.h"

namespace exifkeep {

// Adjusts the records for process codes 2 to 6 and leaves them alone for any other.
void applyProcessing(int processCode, const PRaster& picture, ExifMetadata& metadata);

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// SaveFile and SaveProcessFile: decides whether and how metadata is saved.
#pragma once

#include <praster.h>

namespace exifkeep {

// REQUIRES: an image that is not empty. A process code outside 2 to 6 changes nothing.
bool saveWithMetadata(const char* source, const char* destination, int processCode, PRaster* image,
                      PRaster* thumbnail);

}  // namespace exifkeep

// SaveFile and SaveProcessFile: which metadata goes along, and into which kind of file.
#pragma once

#include <praster.h>

namespace exifkeep {

// REQUIRES: an image that is not empty. A process code outside 2 to 6 changes nothing.
bool saveWithMetadata(const char* source, const char* destination, int processCode, PRaster* image,
                      PRaster* thumbnail);

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// Reads the name of a picture's recording.
#pragma once

#include "probe/exif_reader.h"

namespace exifkeep {

// Copies RelatedSoundFile to `name`, a buffer of at least 15 bytes, if it is the name of a WAV
// file. Otherwise returns false and leaves the buffer unchanged.
bool readSoundFileName(ExifReader& reader, const char* path, char* name);

}  // namespace exifkeep

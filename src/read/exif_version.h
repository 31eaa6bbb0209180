// SPDX-License-Identifier: MIT
// A file's Exif version as a number.
#pragma once

#include "probe/exif_reader.h"

namespace exifkeep {

// 2.2f for "0220". The four characters are not checked to be digits. 0.0f if the file has no
// version.
float readExifVersion(ExifReader& reader, const char* path);

}  // namespace exifkeep

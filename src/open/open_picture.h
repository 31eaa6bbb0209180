// SPDX-License-Identifier: MIT
// Opens an Exif picture: its main image and its thumbnail.
#pragma once

#include <praster.h>

namespace exifkeep {

class ExifReader;

// False, with both images unchanged, if the file at `path` is not an Exif file; otherwise true,
// even if nothing could be loaded. If `image` is not null, it gets the decoded picture or becomes
// empty. If `thumbnail` is not null, loadThumbnail fills it.
bool openPicture(ExifReader& reader, const char* path, PRaster* image, PRaster* thumbnail);

}  // namespace exifkeep

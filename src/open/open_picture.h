// Opening an Exif picture for a host: its main image and its thumbnail.
#pragma once

#include <praster.h>

namespace exifkeep {

class ExifReader;

// False, with both objects untouched, when the file at `path` is no Exif file; else true, whatever
// could be loaded. `image`, where given, holds the decoded picture afterwards or is empty;
// `thumbnail`, where given, is filled as loadThumbnail says.
bool openPicture(ExifReader& reader, const char* path, PRaster* image, PRaster* thumbnail);

}  // namespace exifkeep

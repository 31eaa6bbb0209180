// The thumbnail that a picture carries in its thumbnail directory (IFD1), as an image: a JPEG
// stream decoded by the codec, or uncompressed pixels read here.
#pragma once

#include <praster.h>

#include "probe/exif_reader.h"

namespace exifkeep {

// Fills `thumbnail` from the file; true when it holds the file's thumbnail afterwards. It stays as
// it was when the file has no thumbnail or none of a known kind, holds fewer bytes than the
// thumbnail's size asks for, or a block or the temporary file cannot be had. It is empty when the
// codec cannot decode a JPEG thumbnail or the image cannot be made.
// REQUIRES: `reader` has probed `file` with success.
bool loadThumbnail(ExifReader& reader, ExifFile& file, PRaster& thumbnail);

}  // namespace exifkeep

// The thumbnail that a picture carries in its thumbnail directory (IFD1), as an image: a JPEG
// stream decoded by the codec, or uncompressed pixels read here.
#pragma once

#include <praster.h>

#include <cstdint>

#include "probe/exif_reader.h"

namespace exifkeep {

// Of an uncompressed thumbnail, so that a short file cannot ask for much memory.
inline constexpr uint64_t mostThumbnailPixels = uint64_t{1} << 22;

// Fills `thumbnail` from the file; true when it holds the file's thumbnail afterwards. It stays as
// it was when the file has no thumbnail or none of a known kind, or a block or the temporary file
// cannot be had. It is empty when the directory names a thumbnail that cannot be delivered: a JPEG
// stream beyond the end of the file or that the codec cannot decode, uncompressed pixels above the
// limit, or an image that cannot be made.
// REQUIRES: `reader` has probed `file` with success.
bool loadThumbnail(ExifReader& reader, ExifFile& file, PRaster& thumbnail);

}  // namespace exifkeep

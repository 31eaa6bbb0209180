// The thumbnail that a picture carries in its thumbnail directory (IFD1), as an image: a JPEG
// stream decoded by the codec, or uncompressed pixels read here.
#pragma once

#include <praster.h>

#include <cstdint>

#include "probe/exif_reader.h"

namespace exifkeep {

// Limits far above any camera's, so that a short file cannot ask for much memory or time: pixels,
// and bytes of a JPEG stream, of which the rest is not looked at.
inline constexpr uint64_t mostThumbnailPixels = uint64_t{1} << 22;
inline constexpr uint32_t mostJpegBytes = uint32_t{1} << 23;

// Fills `thumbnail` from the file; true when it holds the file's thumbnail afterwards. It stays as
// it was when the file has no thumbnail or none of a known kind, or a block or the temporary file
// cannot be had. It is empty when the directory names a thumbnail that cannot be delivered: a JPEG
// stream that is none, lies beyond the end of the file or cannot be decoded, more pixels than the
// limit, or an image that cannot be made.
// REQUIRES: `reader` has probed `file` with success.
bool loadThumbnail(ExifReader& reader, ExifFile& file, PRaster& thumbnail);

}  // namespace exifkeep

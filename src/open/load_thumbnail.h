// SPDX-License-Identifier: MIT
// Loads the thumbnail of a picture's thumbnail directory (IFD1): a JPEG stream decoded by the
// codec, or uncompressed pixels.
#pragma once

#include <praster.h>

#include <cstdint>

#include "probe/exif_reader.h"

namespace exifkeep {

// Limits far above those of any camera, so that a short file cannot demand much memory or time. A
// JPEG stream is truncated to its limit.
inline constexpr uint64_t maxThumbnailPixels = uint64_t{1} << 22;
inline constexpr uint32_t maxJpegBytes = uint32_t{1} << 23;

// Fills `thumbnail` from the file; true on success. `thumbnail` is unchanged if the file has no
// thumbnail of a known kind, or if memory or the temporary file cannot be obtained. It is empty if
// the thumbnail is invalid: a JPEG stream that is not JPEG, is outside the file or cannot be
// decoded, more pixels than the limit, or an image that cannot be created. REQUIRES: `reader` has
// probed `file` with success.
bool loadThumbnail(ExifReader& reader, ExifFile& file, PRaster& thumbnail);

}  // namespace exifkeep

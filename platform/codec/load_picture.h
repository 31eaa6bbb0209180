/// @file
/// Opening pictures of every kind that the codec reads, with metadata or without.
#pragma once

#include <platform_api.h>
#include <praster.h>

namespace exifkeep {

/// Decodes a picture in a file: JPEG, TIFF or PNG, by its first bytes. Pixels come as they are
/// stored. See pxcodec32.h for what is refused.
///
/// @param path  the file
/// @param[out] image  what it held is freed; empty when the result is false
/// @return whether the picture was decoded
EXIFKEEP_PLATFORM_API bool loadPicture(const char* path, PRaster& image) noexcept;

}  // namespace exifkeep

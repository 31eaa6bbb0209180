// SPDX-License-Identifier: MIT
/// @file
/// Loads pictures of any kind that the codec reads, with or without metadata.
#pragma once

#include <platform_api.h>
#include <praster.h>

namespace exifkeep {

/// Decodes a JPEG, TIFF or PNG file, which is recognised by its first bytes. Pixels are returned as
/// stored. See pxcodec32.h for limits.
///
/// @param path  the file
/// @param[out] image  its old contents are freed; empty if the result is false
/// @return whether the picture was decoded
EXIFKEEP_PLATFORM_API bool loadPicture(const char* path, PRaster& image) noexcept;

}  // namespace exifkeep

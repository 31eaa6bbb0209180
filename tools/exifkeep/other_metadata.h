// SPDX-License-Identifier: MIT
// Metadata other than Exif, which is lost when a picture is saved.
#pragma once

#include <string>

namespace program {

// The kinds of other metadata in the JPEG, TIFF or PNG file at `path`, such as "ICC profile, XMP".
// Empty if there is none or the file cannot be read.
std::string otherMetadata(const std::string& path);

}  // namespace program

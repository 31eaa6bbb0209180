// What a picture holds beside its pixels and Exif data, and loses when it is saved.
#pragma once

#include <string>

namespace program {

// The kinds that the JPEG, TIFF or PNG file at `path` holds, as a list for people such as
// "ICC profile, XMP". Empty when there is none, or the file cannot be read.
std::string otherMetadata(const std::string& path);

}  // namespace program

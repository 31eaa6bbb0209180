// A small picture of a picture, for pages and lists.
#pragma once

#include <string>
#include <string_view>

namespace program {

struct PicturePreview {
  std::string jpeg;  // the bytes of a JPEG file; empty when the picture cannot be shown
  unsigned width = 0;
  unsigned height = 0;
};

// The thumbnail that the file holds, else one made from its image, turned as `orientation` says:
// the library's English words for the Orientation tag, or nothing. Silent on failure.
PicturePreview makePreview(const std::string& path, std::string_view orientation);

}  // namespace program

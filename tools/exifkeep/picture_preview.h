// A small picture of a picture, for pages and lists.
#pragma once

#include <cstdint>
#include <string>

namespace program {

struct PicturePreview {
  std::string jpeg;  // the bytes of a JPEG file; empty when the picture cannot be shown
  unsigned width = 0;
  unsigned height = 0;
  bool isDamaged = false;  // rows are missing
};

// The thumbnail that the file holds, or one made from its image when there is none or a damaged
// one; turned as `orientation` says, the number of the Orientation tag. Silent on failure.
PicturePreview makePreview(const std::string& path, std::int64_t orientation);

}  // namespace program

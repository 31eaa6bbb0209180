// SPDX-License-Identifier: MIT
// Previews of pictures.
#pragma once

#include <cstdint>
#include <string>

namespace program {

struct PicturePreview {
  std::string jpeg;  // the bytes of a JPEG file, or empty if the picture cannot be shown
  unsigned width = 0;
  unsigned height = 0;
  bool isDamaged = false;  // rows are missing
};

// The file's thumbnail, or one made from its image if there is none or it is damaged, with
// `orientation`, the value of the Orientation tag, applied. Prints no messages.
PicturePreview makePreview(const std::string& path, int64_t orientation);

}  // namespace program

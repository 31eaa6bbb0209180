// SPDX-License-Identifier: MIT
#include "tiff_front.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace exifkeep {

size_t TiffFront::read(void* bytes, size_t count) {
  if (position_ >= bytes_.size()) return 0;
  const size_t held = std::min<size_t>(count, bytes_.size() - position_);
  std::memcpy(bytes, bytes_.data() + position_, held);
  position_ += held;
  return held;
}

bool TiffFront::write(const void* bytes, size_t count) {
  const uint64_t end = position_ + count;
  if (hasEnded_ && position_ >= bytes_.size()) {
    pixels_ = std::max(pixels_, end - bytes_.size());
  } else {
    try {
      if (end > bytes_.size()) bytes_.resize(end);
    } catch (const std::bad_alloc&) {
      return false;
    }
    std::memcpy(bytes_.data() + position_, bytes, count);
  }
  position_ = end;
  return true;
}

}  // namespace exifkeep

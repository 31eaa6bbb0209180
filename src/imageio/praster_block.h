// The images that the library itself creates: rasters on the heap, destroyed through the virtual
// destructor.
#pragma once

#include <praster.h>

namespace exifkeep {

class PRasterBlock : public PRaster {
 public:
  ~PRasterBlock() override = default;
};

// An image that was not given, or holds nothing.
inline bool isMissing(const PRaster* image) {
  return !image || image->IsEmpty();
}

}  // namespace exifkeep

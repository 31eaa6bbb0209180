// The images that the library itself creates: rasters on the heap, destroyed through the virtual
// destructor.
#pragma once

#include <praster.h>

namespace exifkeep {

class PRasterBlock : public PRaster {
 public:
  ~PRasterBlock() override = default;
};

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// Images that the library itself creates.
#pragma once

#include <praster.h>

namespace exifkeep {

class PRasterBlock : public PRaster {
 public:
  ~PRasterBlock() override = default;
};

// Whether an image is null or empty.
inline bool isMissing(const PRaster* image) {
  return !image || image->IsEmpty();
}

}  // namespace exifkeep

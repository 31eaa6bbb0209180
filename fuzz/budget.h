// SPDX-License-Identifier: MIT
// Limits the processor time and the heap memory of an input, with the figures of SECURITY.md. The
// process ends if an input exceeds them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace exifkeep::fuzz {

class Budget {
 public:
  // Starts measuring.
  explicit Budget(size_t fileSize);
  // Stops measuring. `pixels` is the number decoded or attempted.
  void check(uint64_t pixels = 0) const;

 private:
  size_t fileSize_;
  double cpuBefore_;
};

}  // namespace exifkeep::fuzz

// What one input may cost: processor time, and heap memory held at once. Where a target finds one
// that costs more, the process ends. The numbers are those of SECURITY.md.
#pragma once

#include <cstddef>
#include <cstdint>

namespace exifkeep::fuzz {

class Budget {
 public:
  // Measuring begins.
  explicit Budget(size_t fileSize);
  // Measuring ends here; `pixels` are those decoded, or given up.
  void check(uint64_t pixels = 0) const;

 private:
  size_t fileSize_;
  double cpuBefore_;
};

}  // namespace exifkeep::fuzz

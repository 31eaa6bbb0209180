// SPDX-License-Identifier: MIT
// Heap memory is counted by hooks of the address sanitizer; without it only time is measured. At
// the end the process prints the shares of the budget that the worst inputs took.
#include "budget.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

#include "input.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define EXIFKEEP_COUNTS_MEMORY
#endif
#endif

#if defined(EXIFKEEP_COUNTS_MEMORY)
#include <sanitizer/allocator_interface.h>
#endif

namespace exifkeep::fuzz {
namespace {

constexpr double secondsAtLeast = 0.25, secondsPerPixel = 100e-9, secondsPerByte = 1e-6;
constexpr double memoryAtLeast = 128 << 20, memoryPerPixel = 24, memoryPerByte = 2;
// The library is slower with sanitizers, and the machine may be busy.
constexpr double slowness = 8;

size_t held = 0, peak = 0;

#if defined(EXIFKEEP_COUNTS_MEMORY)
void countAllocated(const volatile void*, size_t size) {
  held += size;
  peak = std::max(peak, held);
}
void countFreed(const volatile void* memory) {
  const size_t size = __sanitizer_get_allocated_size(memory);
  held -= std::min(held, size);
}
const int installed = __sanitizer_install_malloc_and_free_hooks(countAllocated, countFreed);
#endif

double cpuSeconds() {
  timespec now;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// The largest shares of the budget and the largest amounts of all inputs.
struct Worst {
  double cpuShare = 0, memoryShare = 0, cpu = 0, memory = 0;
  ~Worst() {
    std::fprintf(stderr,
                 "budget: worst CPU %.3f s, %.1f %% of its budget; memory %.1f MiB, %.1f %%\n", cpu,
                 cpuShare * 100, memory / (1 << 20), memoryShare * 100);
  }
} worst;

}  // namespace

Budget::Budget(size_t fileSize) : fileSize_(fileSize) {
  held = peak = 0;
  cpuBefore_ = cpuSeconds();
}

void Budget::check(uint64_t pixels) const {
  const double cpu = cpuSeconds() - cpuBefore_, memory = static_cast<double>(peak);
  const auto all = static_cast<double>(pixels), bytes = static_cast<double>(fileSize_);
  const double cpuAllowed =
      slowness * (secondsAtLeast + secondsPerPixel * all + secondsPerByte * bytes);
  const double memoryAllowed = memoryAtLeast + memoryPerPixel * all + memoryPerByte * bytes;
  worst.cpuShare = std::max(worst.cpuShare, cpu / cpuAllowed);
  worst.memoryShare = std::max(worst.memoryShare, memory / memoryAllowed);
  worst.cpu = std::max(worst.cpu, cpu);
  worst.memory = std::max(worst.memory, memory);
  require(cpu <= cpuAllowed, "more processor time than the budget allows");
  require(memory <= memoryAllowed, "more memory than the budget allows");
}

}  // namespace exifkeep::fuzz

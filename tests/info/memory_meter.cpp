// Replaces the program's allocation functions, the nothrow and array forms too: sanitizers bring
// their own of these, which would not be counted.
#include "info/memory_meter.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t allocated = 0;
thread_local int failures = 0, toFailure = 0;

void* allocate(std::size_t size) noexcept {
  if (toFailure > 0 && --toFailure == 0) {
    ++failures;
    return nullptr;
  }
  allocated += size;
  return std::malloc(size > 0 ? size : 1);
}

void* allocateOrThrow(std::size_t size) {
  void* memory = allocate(size);
  return memory != nullptr ? memory : throw std::bad_alloc();
}

}  // namespace

std::size_t exifkeep::test::bytesAllocated() {
  return allocated;
}
void exifkeep::test::failAllocations(int n) {
  failures = 0;
  toFailure = n;
}
int exifkeep::test::allocationsFailed() {
  return failures;
}

// clang-format off
void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
// clang-format on

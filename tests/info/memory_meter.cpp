// Replaces the program's allocation functions. The nothrow and array forms are replaced too:
// sanitizers bring their own, which would not be counted.
#include "info/memory_meter.h"

#include <cstdlib>
#include <new>

namespace exifkeep::test {
namespace {

thread_local std::size_t allocated = 0;
thread_local int failures = 0, toFailure = 0;
thread_local bool isLasting = false;

void* allocate(std::size_t size) noexcept {
  if (toFailure > 0 && --toFailure == 0) {
    ++failures;
    if (isLasting) toFailure = 1;
    return nullptr;
  }
  allocated += size;
  return std::malloc(size > 0 ? size : 1);
}

void* allocateOrThrow(std::size_t size) {
  void* memory = allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void resetMeter() {
  allocated = 0;
  failures = 0;
}
std::size_t bytesAllocated() {
  return allocated;
}
int allocationsFailed() {
  return failures;
}
void failAllocations(int n, bool lasting) {
  toFailure = n;
  isLasting = lasting;
}

}  // namespace exifkeep::test

using exifkeep::test::allocate;
using exifkeep::test::allocateOrThrow;

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

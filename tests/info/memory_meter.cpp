// SPDX-License-Identifier: MIT
// Replaces the program's allocation functions, including the nothrow and array forms: those of
// sanitizers would not be counted.
#include "info/memory_meter.h"

#include <cstdlib>
#include <cstring>
#include <new>

#if defined(MALLOC_FAILS)
#include <dlfcn.h>

extern "C" {
void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
}
#endif

namespace {

#if defined(MALLOC_FAILS)
constexpr auto systemMalloc = __libc_malloc;
#else
constexpr auto systemMalloc = std::malloc;
#endif

thread_local size_t allocated = 0;
thread_local int failures = 0, toFailure = 0;
thread_local bool allFail = false;

bool failsNow() noexcept {
  if (toFailure == 0 || --toFailure > 0) return false;
  toFailure = allFail ? 1 : 0;
  ++failures;
  return true;
}

void* allocate(size_t size) noexcept {
  if (failsNow()) return nullptr;
  allocated += size;
  return systemMalloc(size > 0 ? size : 1);
}

void* allocateOrThrow(size_t size) {
  void* memory = allocate(size);
  return memory ? memory : throw std::bad_alloc();
}

}  // namespace

size_t exifkeep::test::bytesAllocated() {
  return allocated;
}
void exifkeep::test::failAllocations(int n, bool andAllAfter) {
  failures = 0;
  toFailure = n;
  allFail = andAllAfter;
}
int exifkeep::test::allocationsFailed() {
  return failures;
}

// clang-format off
void* operator new(size_t size) { return allocateOrThrow(size); }
void* operator new[](size_t size) { return allocateOrThrow(size); }
void* operator new(size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, size_t) noexcept { std::free(memory); }
#if defined(MALLOC_FAILS)
namespace {
// libtiff dereferences null pointers if it runs out of memory, so its calls do not fail.
bool mallocFails(void* caller) noexcept {
  Dl_info library;
  return toFailure > 0 &&
         !(dladdr(caller, &library) && std::strstr(library.dli_fname, "libtiff")) && failsNow();
}
}  // namespace

#define FAIL_FIRST(call) mallocFails(__builtin_return_address(0)) ? nullptr : call
extern "C" {
void* malloc(size_t size) { return FAIL_FIRST(__libc_malloc(size)); }
void* calloc(size_t n, size_t size) { return FAIL_FIRST(__libc_calloc(n, size)); }
void* realloc(void* old, size_t size) { return FAIL_FIRST(__libc_realloc(old, size)); }
}
#endif
// clang-format on

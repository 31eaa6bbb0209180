#include "failing_new.h"

#include <cstdlib>
#include <new>

namespace {

thread_local int failing = 0;
thread_local int calls = 0;

void* allocate(std::size_t size) {
  return ++calls == failing ? nullptr : std::malloc(size ? size : 1);
}

}  // namespace

void failNew(int n) {
  failing = n;
  calls = 0;
}

int newCalls() {
  return calls;
}

void* operator new(std::size_t size) {
  if (void* memory = allocate(size)) return memory;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
void* operator new[](std::size_t size) {
  return operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}

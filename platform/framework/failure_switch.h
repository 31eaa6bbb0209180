// Test builds only (EXIFKEEP_FAILURE_SWITCH): makes a chosen platform call fail and counts what is
// still held, so that tests can walk through every failure of an operation and show that nothing
// leaks. In normal builds failsNow is constant false and all else is absent. Raster and codec code
// may ask failsNow as well.
#pragma once

namespace exifkeep {

enum class PlatformCall {
  open,
  read,
  write,
  seek,
  fileSize,
  sync,
  close,
  rename,
  remove,
  allocate,
  lock,
  temporaryDirectory,
  palette,
  codec,
  kinds  // how many kinds there are; not a kind
};

#if defined(EXIFKEEP_FAILURE_SWITCH)

// Makes the n-th call of this kind from now on fail on this thread, and those after it too if asked
// for; n counts from 1. One failure per kind can be set.
void failCall(PlatformCall kind, int n, bool andAllAfter = false) noexcept;

// The calls of this kind that this thread made since its last clearFailures.
int callsMade(PlatformCall kind) noexcept;

// Takes back this thread's failCall and starts its counts anew.
void clearFailures() noexcept;

// What the whole process holds: file handles, global memory blocks, palettes.
int openHandles() noexcept;
int liveBlocks() noexcept;
int livePalettes() noexcept;

// The hook: counts one call of this kind and tells whether it is the one that shall fail.
bool failsNow(PlatformCall kind) noexcept;

// The hooks behind the counts; change is 1 or -1.
void countHandle(int change) noexcept;
void countBlock(int change) noexcept;
void countPalette(int change) noexcept;

#else

constexpr bool failsNow(PlatformCall) noexcept {
  return false;
}
constexpr void countHandle(int) noexcept {}
constexpr void countBlock(int) noexcept {}
constexpr void countPalette(int) noexcept {}

#endif

}  // namespace exifkeep

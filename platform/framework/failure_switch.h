// In test builds (EXIFKEEP_FAILURE_SWITCH) makes chosen platform calls fail and counts open
// handles, blocks and palettes, so that tests can try every failure of an operation and check that
// nothing leaks. In normal builds failsNow is constantly false.
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
  kinds  // the number of kinds, not a kind
};

#if defined(EXIFKEEP_FAILURE_SWITCH)

// Makes the n-th call of this kind from now on fail on this thread, and optionally all after it; n
// counts from 1. One failure per kind can be set.
void failCall(PlatformCall kind, int n, bool andAllAfter = false) noexcept;

// The number of calls of this kind by this thread since its last clearFailures.
int callsMade(PlatformCall kind) noexcept;

// Cancels this thread's failures and resets its counts.
void clearFailures() noexcept;

// The number of open file handles, global memory blocks and palettes in the whole process.
int openHandles() noexcept;
int liveBlocks() noexcept;
int livePalettes() noexcept;

// Counts a call of this kind and returns whether it must fail.
bool failsNow(PlatformCall kind) noexcept;

// Update the numbers above; change is 1 or -1.
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

// SPDX-License-Identifier: MIT
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
void failCall(PlatformCall kind, int n, bool andAllAfter = false);

// The number of calls of this kind by this thread since its last clearFailures.
int callsMade(PlatformCall kind);

// Cancels this thread's failures and resets its counts.
void clearFailures();

// The number of open file handles, global memory blocks and palettes in the whole process.
int openHandles();
int liveBlocks();
int livePalettes();

// Counts a call of this kind and returns whether it must fail.
bool failsNow(PlatformCall kind);

// Update the numbers above; change is 1 or -1.
void countHandle(int change);
void countBlock(int change);
void countPalette(int change);

#else

constexpr bool failsNow(PlatformCall) {
  return false;
}
constexpr void countHandle(int) {}
constexpr void countBlock(int) {}
constexpr void countPalette(int) {}

#endif

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// Failures and call counts are per thread, so that tests on several threads do not interfere; open
// handles, blocks and palettes are counted for the whole process.
#include "failure_switch.h"

#if defined(EXIFKEEP_FAILURE_SWITCH)

#include <array>
#include <atomic>
#include <cerrno>

namespace exifkeep {
namespace {

struct CallState {
  int made = 0;
  int untilFailure = 0;  // 0: none is set
  bool isLasting = false;
};

thread_local std::array<CallState, static_cast<size_t>(PlatformCall::kinds)> calls;

CallState& stateOf(PlatformCall kind) {
  return calls[static_cast<size_t>(kind)];
}

// The errno that a failing call of each kind sets.
int reasonOf(PlatformCall kind) {
  switch (kind) {
    case PlatformCall::open: return EMFILE;
    case PlatformCall::write: return ENOSPC;
    case PlatformCall::temporaryDirectory: return ENOSPC;
    case PlatformCall::codec: return 0;
    default: return EIO;
  }
}

std::atomic<int> handles{0};
std::atomic<int> blocks{0};
std::atomic<int> palettes{0};

}  // namespace

void failCall(PlatformCall kind, int n, bool andAllAfter) {
  stateOf(kind).untilFailure = n;
  stateOf(kind).isLasting = andAllAfter;
}

int callsMade(PlatformCall kind) {
  return stateOf(kind).made;
}

void clearFailures() {
  calls.fill({});
}

int openHandles() {
  return handles;
}
int liveBlocks() {
  return blocks;
}
int livePalettes() {
  return palettes;
}

bool failsNow(PlatformCall kind) {
  CallState& state = stateOf(kind);
  ++state.made;
  if (state.untilFailure == 0 || --state.untilFailure > 0) return false;
  errno = reasonOf(kind);
  state.untilFailure = state.isLasting ? 1 : 0;
  return true;
}

void countHandle(int change) {
  handles += change;
}
void countBlock(int change) {
  blocks += change;
}
void countPalette(int change) {
  palettes += change;
}

}  // namespace exifkeep

#endif

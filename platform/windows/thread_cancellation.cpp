// SPDX-License-Identifier: MIT
// Windows does not cancel threads.
#include "thread_cancellation.h"

namespace exifkeep {

int holdCancellation() {
  return 0;
}

void restoreCancellation(int) {}

}  // namespace exifkeep

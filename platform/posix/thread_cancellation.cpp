// SPDX-License-Identifier: MIT
#include "thread_cancellation.h"

#include <pthread.h>

namespace exifkeep {

int holdCancellation() {
  int before = PTHREAD_CANCEL_ENABLE;
  pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before);
  return before;
}

void restoreCancellation(int before) {
  pthread_setcancelstate(before, nullptr);
}

}  // namespace exifkeep

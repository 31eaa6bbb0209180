// Windows does not cancel threads.
#include "thread_cancellation.h"

namespace exifkeep {

int holdCancellation() noexcept {
  return 0;
}

void restoreCancellation(int) noexcept {}

}  // namespace exifkeep

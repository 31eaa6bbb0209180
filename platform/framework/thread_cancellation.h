// SPDX-License-Identifier: MIT
// Disables cancellation of the calling thread. Implemented in platform/posix and platform/windows.
#pragma once

namespace exifkeep {

// Returns the previous state, for restoreCancellation.
int holdCancellation();
void restoreCancellation(int before);

}  // namespace exifkeep

// Keeping the calling thread from being cancelled for a while.
#pragma once

namespace exifkeep {

// Holds cancellation back; returns what it was, for restoreCancellation. Made of the system's own
// calls, in platform/posix and platform/windows.
int holdCancellation() noexcept;
void restoreCancellation(int before) noexcept;

}  // namespace exifkeep

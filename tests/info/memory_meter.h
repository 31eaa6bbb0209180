// Counts what operator new hands out on this thread and makes chosen allocations fail.
#pragma once

#include <cstddef>

namespace exifkeep::test {

void resetMeter();
std::size_t bytesAllocated();
// Allocations that failed because failAllocations said so.
int allocationsFailed();

// Makes the n-th allocation from now on fail, and with `lasting` all that follow it; n = 0 none.
void failAllocations(int n, bool lasting = false);

}  // namespace exifkeep::test

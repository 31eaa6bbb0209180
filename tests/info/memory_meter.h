// Counts what operator new hands out on this thread and makes chosen allocations fail.
#pragma once

#include <cstddef>

namespace exifkeep::test {

// Since the thread began.
std::size_t bytesAllocated();

// Makes the n-th allocation from now on fail; n = 0 none.
void failAllocations(int n);
// How many have failed since.
int allocationsFailed();

}  // namespace exifkeep::test

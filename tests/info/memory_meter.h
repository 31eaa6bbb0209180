// Counts what operator new hands out on this thread and makes chosen allocations fail. Without
// sanitizers, which have their own, those of malloc, calloc and realloc in all libraries too.
#pragma once

#include <cstddef>

namespace exifkeep::test {

// Since the thread began.
size_t bytesAllocated();

// Makes the n-th allocation from now on fail, and those after it too if asked for; n = 0 none.
void failAllocations(int n, bool andAllAfter = false);
// How many have failed since.
int allocationsFailed();

}  // namespace exifkeep::test

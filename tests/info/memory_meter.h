// SPDX-License-Identifier: MIT
// Counts what operator new allocates on this thread, and makes chosen allocations fail. Without
// sanitizers, also those of malloc, calloc and realloc in all libraries.
#pragma once

#include <cstddef>

namespace exifkeep::test {

// Since the thread was started.
size_t bytesAllocated();

// Makes the n-th allocation from now on fail, and optionally all after it; none if n is 0.
void failAllocations(int n, bool andAllAfter = false);
// The number of allocations that have failed since.
int allocationsFailed();

}  // namespace exifkeep::test

// operator new with the failure switch's idea: the n-th allocation of this thread can be made to
// fail. Linked into one test program only.
#pragma once

// Fails the n-th operator new from now on, on this thread; 0 fails none.
void failNew(int n);
// Allocations since the last failNew.
int newCalls();

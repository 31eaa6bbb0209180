// The frame that every exported call runs in: the library's module state is the thread's current
// one for the time of the call, and no exception leaves it.
#pragma once

#include <afxwin.h>

namespace exifkeep {

// The library's module state: where its texts come from.
const AFX_MODULE_STATE& moduleState();

// Runs `work` in the frame; what it cannot finish, for want of memory say, gives `failure`.
template <class Result, class Work>
Result runCall(Result failure, Work work) noexcept {
  const AFX_MAINTAIN_STATE2 state(&moduleState());
  try {
    return work();
  } catch (...) {
    return failure;
  }
}

}  // namespace exifkeep

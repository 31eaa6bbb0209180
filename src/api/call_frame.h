// SPDX-License-Identifier: MIT
// The frame of every exported call: the library's module state is the thread's current one during
// the call, and no exception leaves it.
#pragma once

#include <afxwin.h>

namespace exifkeep {

// The library's module state, which has the library's texts.
const AFX_MODULE_STATE& moduleState();

// Runs `work`; an exception, such as bad_alloc, becomes `failure`.
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

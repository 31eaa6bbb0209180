// SPDX-License-Identifier: MIT
#include <afx.h>
#include <afxstat_.h>

#include "thread_cancellation.h"

namespace {

thread_local AFX_MAINTAIN_STATE2* innermost = nullptr;

}  // namespace

AFX_MAINTAIN_STATE2::AFX_MAINTAIN_STATE2(const AFX_MODULE_STATE* module) noexcept
    : module_(module), previous_(innermost), cancellation_(exifkeep::holdCancellation()) {
  innermost = this;
}

AFX_MAINTAIN_STATE2::~AFX_MAINTAIN_STATE2() {
  innermost = previous_;
  exifkeep::restoreCancellation(cancellation_);
}

// Once in a call; out of the way of the other texts.
[[gnu::cold]] bool AFX_MAINTAIN_STATE2::loadFirstText(UINT id, CString& text) {
  if (!module_ || !module_->strings()) return false;
  strings_.take(*module_->strings());
  languageTaken_ = true;
  return strings_.load(id, text);
}

AFX_MAINTAIN_STATE2* AFX_MAINTAIN_STATE2::current() noexcept {
  return innermost;
}

BOOL CString::LoadString(UINT id) {
  if (innermost && innermost->loadText(id, *this)) return TRUE;
  Empty();
  return FALSE;
}

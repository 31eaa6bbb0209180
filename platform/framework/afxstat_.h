// SPDX-License-Identifier: MIT
// Module states decide from which module CString::LoadString loads texts. A library makes its own
// state the calling thread's current one during a call. Language and code page are read from the
// environment when the first text is loaded and kept until the end of the call, so that all texts
// of a call are in the same language and a later call follows a changed environment.
#pragma once

#include <afx.h>
#include <module_strings.h>
#include <platform_api.h>
#include <windows.h>

// Exists as long as its module. The table is not copied.
class AFX_MODULE_STATE {
 public:
  constexpr explicit AFX_MODULE_STATE(const AfxStringTable* strings) : strings_(strings) {}
  constexpr const AfxStringTable* strings() const { return strings_; }

 private:
  const AfxStringTable* strings_;
};

// Makes `module` the current state of this thread. The destructor restores the previous one;
// objects may nest. During its lifetime the thread cannot be cancelled, so that a library's call is
// completed.
class EXIFKEEP_PLATFORM_API AFX_MAINTAIN_STATE2 {
 public:
  explicit AFX_MAINTAIN_STATE2(const AFX_MODULE_STATE* module) noexcept;
  ~AFX_MAINTAIN_STATE2();
  AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
  AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

  // The current one of this thread, or null.
  static AFX_MAINTAIN_STATE2* current() noexcept;

  // Loads a text of the module. False, with `text` unchanged, if there is no such text.
  bool loadText(UINT id, CString& text) {
    return languageTaken_ ? strings_.load(id, text) : loadFirstText(id, text);
  }

 private:
  bool loadFirstText(UINT id, CString& text);

  const AFX_MODULE_STATE* module_;
  AFX_MAINTAIN_STATE2* previous_;
  int cancellation_;  // the previous cancellation state
  bool languageTaken_ = false;
  exifkeep::ModuleStrings strings_;
};

// SPDX-License-Identifier: MIT
// Module states decide from which module CString::LoadString loads texts. A library makes its own
// state the calling thread's current one during a call. Language and code page are read from the
// environment when the first text is loaded and kept until the end of the call, so that all texts
// of a call are in the same language and a later call follows a changed environment.
#pragma once

#include <module_strings.h>
#include <platform_api.h>
#include <windows.h>

#include <string>
#include <string_view>

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

  // Finds a text of the module. Either `text` is set to the one in the table, or `encoded` to a
  // copy in the user's code page. False, with both unchanged, if there is no such text.
  bool loadText(UINT id, std::string_view& text, std::string& encoded) {
    return languageTaken_ ? strings_.load(id, text, encoded) : loadFirstText(id, text, encoded);
  }

 private:
  bool loadFirstText(UINT id, std::string_view& text, std::string& encoded);

  const AFX_MODULE_STATE* module_;
  AFX_MAINTAIN_STATE2* previous_;
  int cancellation_;  // the previous cancellation state
  bool languageTaken_ = false;
  exifkeep::ModuleStrings strings_;
};

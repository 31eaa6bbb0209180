// Module states: which module's texts CString::LoadString finds. A library makes its own state the
// current one of the calling thread for the time of a call. Language and code page are taken from
// the environment at the first text loaded after the switch and kept until it ends, so that one
// call's texts agree with each other and a later call follows a changed environment.
#pragma once

#include <module_strings.h>
#include <platform_api.h>
#include <windows.h>

#include <string>
#include <string_view>

// A module's state lives as long as the module; the table is not copied.
class AFX_MODULE_STATE {
 public:
  constexpr explicit AFX_MODULE_STATE(const AfxStringTable* strings) : strings_(strings) {}
  constexpr const AfxStringTable* strings() const { return strings_; }

 private:
  const AfxStringTable* strings_;
};

// Makes `module` the current state of this thread; its end restores the state before. Nests. Until
// then the thread is not cancelled: no call of a library is left halfway.
class EXIFKEEP_PLATFORM_API AFX_MAINTAIN_STATE2 {
 public:
  explicit AFX_MAINTAIN_STATE2(const AFX_MODULE_STATE* module) noexcept;
  ~AFX_MAINTAIN_STATE2();
  AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
  AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

  // Finds the module's text with this id: `text` becomes the table's own where that is what is
  // wanted, else `encoded` gets the text. False, and neither touched, when there is none.
  bool loadText(UINT id, std::string_view& text, std::string& encoded);

 private:
  const AFX_MODULE_STATE* module_;
  AFX_MAINTAIN_STATE2* previous_;
  int cancellation_;  // whether the thread could be cancelled before
  bool languageTaken_ = false;
  exifkeep::ModuleStrings strings_;
};

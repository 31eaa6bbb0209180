// SPDX-License-Identifier: MIT
// Asks whether an existing file may be replaced, and shows the progress of a large copy. Without a
// terminal the answer is no.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace program {

class CopyDialogue {
 public:
  // Installs this object as the handler of the shell's copies. The destructor removes it and erases
  // the progress line.
  explicit CopyDialogue(bool overwriteUnasked);
  ~CopyDialogue();
  CopyDialogue(const CopyDialogue&) = delete;
  CopyDialogue& operator=(const CopyDialogue&) = delete;

  bool mayOverwrite(const std::string& target) const;

 private:
  static bool answerOverwrite(void* context, HWND owner, const char* source, const char* target);
  static bool showProgress(void* context, HWND owner, uint64_t done, uint64_t total);

  bool overwriteUnasked_;
  int shownPercent_ = -1;
};

}  // namespace program

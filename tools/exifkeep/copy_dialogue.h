// What a user is asked and shown while a recording is copied: whether an existing file may be
// replaced, and how far a large copy has got. Questions need a terminal; without one the answer
// is no.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace program {

class CopyDialogue {
 public:
  // Installs itself as the handler of the shell's copies for as long as it lives, and wipes the
  // progress line at its end.
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

// SPDX-License-Identifier: MIT
// Replaces the shell's dialogs on a terminal. Not called on Windows, where the shell shows its own.
#include "copy_dialogue.h"

#include <shell_copy_handler.h>

#include <iostream>

#include "escape.h"
#include "standard_streams.h"
#include "system.h"
#include "terminal.h"

namespace program {
namespace {

// Smaller copies are finished before anyone could read the progress.
constexpr uint64_t largeCopy = 32u << 20;

bool askOnTerminal(const std::string& target) {
  // In one write, so that the echo of text typed ahead cannot come in between.
  std::cerr << escapeForTerminal(target) + " exists. Overwrite it? [y/N] " << std::flush;
  // The library asks before it has made any file, so the program may be ended here.
  const EndingDelay none(false);
  std::string answer;
  std::getline(std::cin, answer);
  return !answer.empty() && (answer[0] == 'y' || answer[0] == 'Y');
}

}  // namespace

CopyDialogue::CopyDialogue(bool overwriteUnasked) : overwriteUnasked_(overwriteUnasked) {
  ShellCopyHandler handler;
  handler.mayOverwrite = answerOverwrite;
  handler.progress = showProgress;
  handler.context = this;
  SetShellCopyHandler(handler);
}

CopyDialogue::~CopyDialogue() {
  SetShellCopyHandler({});
  eraseProgress();
}

bool CopyDialogue::mayOverwrite(const std::string& target) const {
  if (overwriteUnasked_) return true;
  if (isTerminal(Stream::input) && isTerminal(Stream::error)) return askOnTerminal(target);
  complainAbout(target, "exists; --yes overwrites it");
  return false;
}

bool CopyDialogue::answerOverwrite(void* context, HWND, const char*, const char* target) {
  return static_cast<const CopyDialogue*>(context)->mayOverwrite(target);
}

bool CopyDialogue::showProgress(void* context, HWND, uint64_t done, uint64_t total) {
  if (endingWaits()) return false;
  if (total < largeCopy || !isCapableTerminal(Stream::error)) return true;
  int& shown = static_cast<CopyDialogue*>(context)->shownPercent_;
  const int percent = static_cast<int>(done * 100 / total);
  if (percent != shown) drawProgress("copying " + std::to_string(percent) + " %");
  shown = percent;
  return true;
}

}  // namespace program

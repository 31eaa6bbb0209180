// The line is short enough for any terminal, so that it never wraps and one sequence erases it.
#include "progress_line.h"

#include <sys/stat.h>
#include <unistd.h>

#include <iostream>

#include "terminal_style.h"

namespace program {
namespace {

bool isShown = false;

constexpr const char* eraseSequence = "\r\x1b[K";

// The null device takes output as silently as a file does.
bool outputGoesToFile() {
  struct stat output, null;
  if (::fstat(STDOUT_FILENO, &output) != 0) return false;
  if (S_ISREG(output.st_mode)) return true;
  return S_ISCHR(output.st_mode) && ::stat("/dev/null", &null) == 0 &&
         output.st_rdev == null.st_rdev;
}

}  // namespace

void drawProgress(const std::string& text) {
  std::cerr << eraseSequence + text << std::flush;
  isShown = true;
}

void eraseProgress() {
  if (isShown) std::cerr << eraseSequence << std::flush;
  isShown = false;
}

BatchProgress::BatchProgress(std::size_t total, bool outputKeptBack)
    : total_(total),
      drawn_(isCapableTerminal(Stream::error) && (outputKeptBack || outputGoesToFile())),
      nextDraw_(Clock::now() + std::chrono::milliseconds(500)) {}

void BatchProgress::advance() {
  ++done_;
  if (!drawn_ || Clock::now() < nextDraw_) return;
  std::string text = std::to_string(done_);
  text += total_ == 0 ? (done_ == 1 ? " file" : " files") : " of " + std::to_string(total_);
  drawProgress(text);
  nextDraw_ = Clock::now() + std::chrono::milliseconds(100);
}

}  // namespace program

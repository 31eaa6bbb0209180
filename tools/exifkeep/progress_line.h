// A line on the terminal that tells how far a long piece of work is. It never meets lines of other
// output: whatever is written to standard error erases it first, and batches draw it only while
// standard output goes to a file. (Lines on a terminal are progress enough, and the reader of a
// pipe may write to the same terminal.)
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace program {

// Replaces the line on standard error, which must be a terminal.
void drawProgress(const std::string& text);
// Does nothing when there is no line.
void eraseProgress();

// The line of a batch of files: appears after half a second, changes at most ten times a second and
// is gone at the end.
class BatchProgress {
 public:
  // A total of 0 is not known. Output that is kept back until the end leaves the terminal free.
  BatchProgress(std::size_t total, bool outputKeptBack);
  ~BatchProgress() { eraseProgress(); }
  BatchProgress(const BatchProgress&) = delete;
  BatchProgress& operator=(const BatchProgress&) = delete;

  // One more file is done.
  void advance();

 private:
  using Clock = std::chrono::steady_clock;

  std::size_t total_;
  std::size_t done_ = 0;
  bool drawn_;
  Clock::time_point nextDraw_;
};

}  // namespace program

// SPDX-License-Identifier: MIT
// Colours and progress lines on terminals. By default output is coloured only on a terminal that
// supports it, and not if NO_COLOR is set and not empty (no-color.org).
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "system.h"

namespace program {

enum class ColorChoice { automatic, always, never };
void chooseColor(ColorChoice choice);

enum class Style { heading, label, good, missing, error };

// `text` in the style's colour, or unchanged if the stream is not coloured. REQUIRES: `text` is
// escaped.
std::string styled(Style style, std::string_view text, Stream stream = Stream::output);

// Whether the stream is a terminal that can colour and rewrite lines.
bool isCapableTerminal(Stream stream);

// Replaces the progress line on standard error, which must be a terminal. Erase the line before any
// other output to standard error.
void drawProgress(const std::string& text);
// Does nothing if there is no line.
void eraseProgress();

// The progress line for many files: appears after half a second, changes at most ten times a second
// and is erased at the end. It is drawn only if standard output goes to a file: output on a
// terminal shows the progress anyway, and the reader of a pipe may write to the same terminal.
class BatchProgress {
 public:
  // A total of 0 means unknown. If output is withheld until the end, the terminal is free.
  BatchProgress(size_t total, bool outputKeptBack);
  ~BatchProgress() { eraseProgress(); }
  BatchProgress(const BatchProgress&) = delete;
  BatchProgress& operator=(const BatchProgress&) = delete;

  // So many more files are finished.
  void advance(size_t count);

 private:
  using Clock = std::chrono::steady_clock;

  size_t total_;
  size_t done_ = 0;
  bool drawn_;
  Clock::time_point nextDraw_;
};

}  // namespace program

// What a terminal shows beyond plain text: colours, and a line that tells how far a long piece of
// work is. By itself the program colours only what goes to a terminal that can show it, and not
// while NO_COLOR is set and not empty (no-color.org); what is redirected stays plain text.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "system.h"

namespace program {

enum class ColorChoice { automatic, always, never };
void chooseColor(ColorChoice choice);

enum class Style { heading, label, good, missing, error };

// `text` as it goes to the stream: in the style's colour, or as it is. Escape `text` before.
std::string styled(Style style, std::string_view text, Stream stream = Stream::output);

// Whether the stream is a terminal where lines can be coloured and rewritten.
bool isCapableTerminal(Stream stream);

// Replaces the progress line on standard error, which must be a terminal. All else that is written
// to standard error must erase the line first.
void drawProgress(const std::string& text);
// Does nothing when there is no line.
void eraseProgress();

// The progress line of a batch of files: appears after half a second, changes at most ten times a
// second and is gone at the end. It is drawn only while standard output goes to a file: lines on a
// terminal are progress enough, and the reader of a pipe may write to the same terminal.
class BatchProgress {
 public:
  // A total of 0 is not known. Output that is kept back until the end leaves the terminal free.
  BatchProgress(size_t total, bool outputKeptBack);
  ~BatchProgress() { eraseProgress(); }
  BatchProgress(const BatchProgress&) = delete;
  BatchProgress& operator=(const BatchProgress&) = delete;

  // One more file is done.
  void advance();

 private:
  using Clock = std::chrono::steady_clock;

  size_t total_;
  size_t done_ = 0;
  bool drawn_;
  Clock::time_point nextDraw_;
};

}  // namespace program

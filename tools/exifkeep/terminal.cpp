// SPDX-License-Identifier: MIT
// Styles are ECMA-48 sequences (select graphic rendition) for the sixteen colours defined by the
// user's theme, so that they are readable on light and dark backgrounds. The progress line is so
// short that it never wraps, and a single sequence erases it.
#include "terminal.h"

#include <cstdlib>
#include <iostream>

namespace program {
namespace {

ColorChoice choice = ColorChoice::automatic;

bool progressIsShown = false;
constexpr const char* eraseSequence = "\r\x1b[K";

const char* sequence(Style style) {
  switch (style) {
    case Style::heading: return "\x1b[1m";
    case Style::label: return "\x1b[2m";
    case Style::good: return "\x1b[32m";
    case Style::missing: return "\x1b[33m";
    case Style::error: return "\x1b[1;31m";
  }
  return "";
}

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value != '\0';
}

bool isColored(Stream stream) {
  if (choice != ColorChoice::automatic) return choice == ColorChoice::always;
  return !isSet("NO_COLOR") && isCapableTerminal(stream);
}

}  // namespace

void chooseColor(ColorChoice chosen) {
  choice = chosen;
}

std::string styled(Style style, std::string_view text, Stream stream) {
  if (text.empty() || !isColored(stream)) return std::string(text);
  return sequence(style) + std::string(text) + "\x1b[0m";
}

bool isCapableTerminal(Stream stream) {
  const char* terminal = std::getenv("TERM");
  if (!terminal || *terminal == '\0' || terminal == std::string_view("dumb")) return false;
  return isTerminal(stream);
}

void drawProgress(const std::string& text) {
  std::cerr << eraseSequence + text << std::flush;
  progressIsShown = true;
}

void eraseProgress() {
  if (progressIsShown) std::cerr << eraseSequence << std::flush;
  progressIsShown = false;
}

BatchProgress::BatchProgress(size_t total, bool outputKeptBack)
    : total_(total),
      drawn_(isCapableTerminal(Stream::error) && (outputKeptBack || outputGoesToFile())),
      nextDraw_(Clock::now() + std::chrono::milliseconds(500)) {}

void BatchProgress::advance(size_t count) {
  done_ += count;
  if (!drawn_ || Clock::now() < nextDraw_) return;
  std::string text = std::to_string(done_);
  text += total_ == 0 ? (done_ == 1 ? " file" : " files") : " of " + std::to_string(total_);
  drawProgress(text);
  nextDraw_ = Clock::now() + std::chrono::milliseconds(100);
}

}  // namespace program

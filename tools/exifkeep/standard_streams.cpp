// SPDX-License-Identifier: MIT
#include "standard_streams.h"

#include <code_page.h>

#include <cerrno>
#include <cstring>
#include <iostream>
#include <string>

#include "escape.h"
#include "system.h"
#include "terminal.h"

namespace program {
namespace {

std::string keptOutput;
bool outputFailed = false;

// Texts are in UTF-8 everywhere else. They are converted to the charset of the locale that was in
// effect when the program started.
std::string inUserCharset(std::string_view text) {
  static const auto encoder = exifkeep::CodePageEncoder::forUser();
  std::string encoded(text);
  if (encoder) encoder->encode(text, encoded);
  return encoded;
}

void writeMessage(const std::string& prefix, std::string_view text) {
  eraseProgress();
  std::cerr << prefix + ' ' + inUserCharset(escapeForTerminal(text)) + '\n';
}

void write(std::string_view bytes) {
  if (outputFailed || writeOutput(bytes)) return;
  // A reader such as head closes the pipe on purpose, so no message.
  if (errno != EPIPE) complainAbout("standard output", std::strerror(errno));
  outputFailed = true;
}

}  // namespace

void guardStandardStreams() {
  guardDescriptors();
  inUserCharset("");
}

void print(std::string_view text) {
  printBytes(inUserCharset(text));
}

void printBytes(std::string_view bytes) {
  // Copying as much as the JSON of a picture would take as long as writing it.
  constexpr size_t longText = 4096;
  if (keptOutput.empty() && bytes.size() >= longText)
    write(bytes);
  else
    keptOutput += bytes;
}

bool flushOutput() {
  write(keptOutput);
  keptOutput.clear();
  return !outputFailed;
}

void complain(std::string_view text) {
  writeMessage(styled(Style::error, "exifkeep:", Stream::error), text);
}

void complainAbout(std::string_view file, std::string_view text) {
  complain(std::string(file) + ": " + std::string(text));
}

void noteAbout(std::string_view file, std::string_view text) {
  writeMessage("exifkeep:", std::string(file) + ": " + std::string(text));
}

}  // namespace program

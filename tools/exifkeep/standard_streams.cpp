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

// The program works in UTF-8 throughout; only here texts become what the user's locale asks for, as
// it was when the program started.
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

}  // namespace

void guardStandardStreams() {
  guardDescriptors();
  inUserCharset("");
}

void print(std::string_view text) {
  printBytes(inUserCharset(text));
}

void printBytes(std::string_view bytes) {
  keptOutput += bytes;
}

bool flushOutput() {
  static bool failed = false;
  if (!failed && !writeOutput(keptOutput)) {
    // The reader, head for one, closed the pipe on purpose: no message.
    if (errno != EPIPE) complainAbout("standard output", std::strerror(errno));
    failed = true;
  }
  keptOutput.clear();
  return !failed;
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

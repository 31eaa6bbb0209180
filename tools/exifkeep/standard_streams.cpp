// The three standard descriptors and what is said on them.
#include "standard_streams.h"

#include <code_page.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>
#include <string>

#include "progress_line.h"
#include "terminal_style.h"
#include "terminal_text.h"

namespace program {
namespace {

// A closed descriptor is filled with one that fails for its purpose; else the next picture opened
// for reading and writing would get its number, and be overwritten with the program's output.
void fillIfClosed(int descriptor, int flags) {
  if (::fcntl(descriptor, F_GETFD) == -1 && errno == EBADF) ::open("/dev/null", flags);
}

std::string keptOutput;

// The program works in UTF-8 throughout; only here texts become what the user's locale asks for, as
// it was when the program started.
std::string inUserCharset(std::string_view text) {
  static const auto encoder = exifkeep::CodePageEncoder::forUser();
  std::string encoded(text);
  if (encoder != nullptr) encoder->encode(text, encoded);
  return encoded;
}

void writeMessage(const std::string& prefix, std::string_view text) {
  eraseProgress();
  std::cerr << prefix + ' ' + inUserCharset(escapeForTerminal(text)) + '\n';
}

}  // namespace

void guardStandardStreams() {
  fillIfClosed(STDIN_FILENO, O_WRONLY);
  fillIfClosed(STDOUT_FILENO, O_RDONLY);
  fillIfClosed(STDERR_FILENO, O_RDONLY);
  // Writing to a pipe without a reader then fails like any other write.
  std::signal(SIGPIPE, SIG_IGN);
  inUserCharset("");
}

bool writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written == -1 && errno != EINTR) return false;
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

void print(std::string_view text) {
  printBytes(inUserCharset(text));
}

void printBytes(std::string_view bytes) {
  keptOutput += bytes;
}

bool flushOutput() {
  static bool failed = false;
  if (!failed && !writeAll(STDOUT_FILENO, keptOutput)) {
    // A reader who has seen enough, such as head, knows.
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

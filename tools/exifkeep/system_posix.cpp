// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "system.h"

namespace program {
namespace {

// The signals that terminate the program, except those that were ignored or blocked when it was
// started, for example by nohup.
sigset_t findEndingSignals() {
  sigset_t blocked, ending;
  ::sigemptyset(&blocked);
  ::sigemptyset(&ending);
  ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action;
    const bool ends = ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_DFL;
    if (ends && ::sigismember(&blocked, signal) == 0) ::sigaddset(&ending, signal);
  }
  return ending;
}

const sigset_t& endingSignals() {
  static const sigset_t signals = findEndingSignals();
  return signals;
}

// Opens a closed descriptor so that using it fails. Otherwise the next picture opened for writing
// could get its number and be overwritten with the program's output.
void fillIfClosed(int descriptor, int flags) {
  if (::fcntl(descriptor, F_GETFD) == -1 && errno == EBADF) ::open("/dev/null", flags);
}

bool writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written == -1 && errno != EINTR) return false;
    if (written > 0) bytes.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

struct MemoryFree {
  void operator()(char* memory) const { std::free(memory); }
};

// The file that the links at `path` lead to.
std::string withoutLinks(const std::string& path) {
  const std::unique_ptr<char, MemoryFree> resolved(::realpath(path.c_str(), nullptr));
  return resolved ? resolved.get() : path;
}

mode_t modeOfNewFiles() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

// Closes the file in any case.
bool writeAndClose(int file, std::string_view bytes) {
  const bool written = file != -1 && writeAll(file, bytes);
  const int problem = errno;
  const bool closed = file != -1 && ::close(file) == 0;
  if (!written) errno = problem;
  return written && closed;
}

// Writes a new file beside the old one and renames it.
bool replaceWhole(const std::string& path, mode_t mode, std::string_view bytes) {
  const EndingDelay delay;
  std::string temporary = path.substr(0, path.rfind('/') + 1) + ".exifkeep-XXXXXX";
  const int file = ::mkostemp(temporary.data(), O_CLOEXEC);
  if (file == -1) return false;
  // File systems without modes, such as those of memory cards, may refuse this.
  [[maybe_unused]] const int ignored = ::fchmod(file, mode);
  if (writeAndClose(file, bytes) && ::rename(temporary.c_str(), path.c_str()) == 0) return true;
  const int problem = errno;
  ::unlink(temporary.c_str());
  errno = problem;
  return false;
}

bool replace(const std::string& path, std::string_view bytes) {
  struct stat status;
  if (::stat(path.c_str(), &status) != 0) return replaceWhole(path, modeOfNewFiles(), bytes);
  if (!S_ISREG(status.st_mode))
    return writeAndClose(::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY), bytes);
  // A file that may not be written must not be replaced either.
  if (::access(path.c_str(), W_OK) != 0) return false;
  return replaceWhole(withoutLinks(path), status.st_mode & 0777, bytes);
}

}  // namespace

void guardDescriptors() {
  fillIfClosed(STDIN_FILENO, O_WRONLY);
  fillIfClosed(STDOUT_FILENO, O_RDONLY);
  fillIfClosed(STDERR_FILENO, O_RDONLY);
  std::signal(SIGPIPE, SIG_IGN);
}

bool isTerminal(Stream stream) {
  switch (stream) {
    case Stream::input: return ::isatty(STDIN_FILENO) != 0;
    case Stream::output: return ::isatty(STDOUT_FILENO) != 0;
    case Stream::error: return ::isatty(STDERR_FILENO) != 0;
  }
  return false;
}

bool outputGoesToFile() {
  struct stat output, null;
  if (::fstat(STDOUT_FILENO, &output) != 0) return false;
  if (S_ISREG(output.st_mode)) return true;
  return S_ISCHR(output.st_mode) && ::stat("/dev/null", &null) == 0 &&
         output.st_rdev == null.st_rdev;
}

std::optional<size_t> readInput(char* to, size_t size) {
  const ssize_t count = ::read(STDIN_FILENO, to, size);
  return count < 0 ? std::nullopt : std::optional<size_t>(count);
}

bool writeOutput(std::string_view bytes) {
  return writeAll(STDOUT_FILENO, bytes);
}

bool delayEnding(bool delayed) {
  static bool current = false;
  ::pthread_sigmask(delayed ? SIG_BLOCK : SIG_UNBLOCK, &endingSignals(), nullptr);
  return std::exchange(current, delayed);
}

bool endingWaits() {
  sigset_t waiting;
  ::sigemptyset(&waiting);
  ::sigpending(&waiting);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP})
    if (::sigismember(&waiting, signal) == 1 && ::sigismember(&endingSignals(), signal) == 1)
      return true;
  return false;
}

void setEnvironment(const char* name, const std::string& value) {
  ::setenv(name, value.c_str(), 1);
}

std::string whyNotReadable(const std::string& path) {
  struct stat status;
  if (::stat(path.c_str(), &status) != 0) return std::strerror(errno);
  if (S_ISDIR(status.st_mode)) return std::strerror(EISDIR);
  if (!S_ISREG(status.st_mode)) return "Not a regular file";
  const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (file == -1) return std::strerror(errno);
  ::close(file);
  return "";
}

std::string whyNotWritable(const std::string& path) {
  const std::string folder = path.substr(0, path.rfind('/') + 1);
  if (::access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) != 0)
    return "its folder: " + std::string(std::strerror(errno));
  if (::access(path.c_str(), W_OK) == 0) return whyNotReadable(path);
  return errno == ENOENT ? "" : std::strerror(errno);
}

std::string whyNotReadToEnd(const std::string& path) {
  if (const std::string problem = whyNotReadable(path); !problem.empty()) return problem;
  const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (file == -1) return std::strerror(errno);
  std::vector<char> buffer(256 * 1024);
  off_t at = 0;
  ssize_t count;
  while ((count = ::pread(file, buffer.data(), buffer.size(), at)) > 0) at += count;
  const std::string problem = count == -1 ? std::strerror(errno) : "";
  ::close(file);
  return problem;
}

bool isThere(const std::string& path) {
  struct stat status;
  return ::lstat(path.c_str(), &status) == 0;
}

bool isSameFile(const std::string& path, const std::string& other) {
  struct stat first, second;
  return ::stat(path.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

std::string replaceFile(const std::string& path, std::string_view bytes) {
  return replace(path, bytes) ? "" : std::strerror(errno);
}

}  // namespace program

// The bytes go to a new file beside the old one, which then takes its place in one step.
#include "replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "standard_streams.h"

namespace program {
namespace {

struct MemoryFree {
  void operator()(char* memory) const { std::free(memory); }
};

// Where the bytes shall lie in the end.
std::string behindLinks(const std::string& path) {
  const std::unique_ptr<char, MemoryFree> resolved(::realpath(path.c_str(), nullptr));
  return resolved == nullptr ? path : resolved.get();
}

mode_t modeOfNewFiles() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

// Closes in any case.
bool writeAndClose(int file, std::string_view bytes) {
  const bool written = file != -1 && writeAll(file, bytes);
  const int problem = errno;
  const bool closed = file != -1 && ::close(file) == 0;
  if (!written) errno = problem;
  return written && closed;
}

bool replaceWhole(const std::string& path, mode_t mode, std::string_view bytes) {
  std::string temporary = path.substr(0, path.rfind('/') + 1) + ".exifkeep-XXXXXX";
  const int file = ::mkostemp(temporary.data(), O_CLOEXEC);
  if (file == -1) return false;
  // A file system without modes, such as that of a camera's card, may refuse; it has its own.
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
  if (!S_ISREG(status.st_mode)) {
    return writeAndClose(::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY), bytes);
  }
  // A file that must not be written is not replaced either.
  if (::access(path.c_str(), W_OK) != 0) return false;
  return replaceWhole(behindLinks(path), status.st_mode & 0777, bytes);
}

}  // namespace

bool replaceFile(const std::string& path, std::string_view bytes) {
  if (replace(path, bytes)) return true;
  complainAbout(path, std::string("not written: ") + std::strerror(errno));
  return false;
}

bool isSameFile(const std::string& path, const std::string& other) {
  struct stat first, second;
  return ::stat(path.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

}  // namespace program

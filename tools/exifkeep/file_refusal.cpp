// Looks at a file without reading it; a FIFO or device is never opened, because that could wait.
#include "file_refusal.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "standard_streams.h"

namespace program {

FileRefusal explainRefusal(const std::string& path) {
  struct stat status;
  if (::stat(path.c_str(), &status) != 0) return {ExitStatus::failed, std::strerror(errno)};
  if (S_ISDIR(status.st_mode)) return {ExitStatus::failed, std::strerror(EISDIR)};
  if (!S_ISREG(status.st_mode)) return {ExitStatus::failed, "Not a regular file"};
  const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (file == -1) return {ExitStatus::failed, std::strerror(errno)};
  ::close(file);
  return {ExitStatus::notExif, "not an Exif file"};
}

bool canBeOpened(const std::string& path) {
  const FileRefusal refusal = explainRefusal(path);
  if (refusal.status != ExitStatus::failed) return true;
  complainAbout(path, refusal.reason);
  return false;
}

}  // namespace program

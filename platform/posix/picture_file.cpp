// Picture files over POSIX descriptors. Opening never waits: O_NONBLOCK matters for a FIFO or
// device under a picture's name only, and those are turned down. What the system refuses,
// GetLastError tells.
#include "picture_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "failure_switch.h"
#include "last_error.h"

namespace exifkeep {

PictureFile::~PictureFile() {
  if (file_ >= 0) ::close(file_);
}

bool PictureFile::open(const char* path, Purpose purpose) {
  if (failsNow(PlatformCall::open)) return failed();
  const int flags = purpose == Purpose::writing ? O_RDWR | O_CREAT : O_RDONLY;
  do {
    file_ = ::open(path, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
  } while (file_ < 0 && errno == EINTR);
  if (file_ < 0) return failed();
  struct stat status;
  if (::fstat(file_, &status) == 0 && S_ISREG(status.st_mode)) {
    size_ = static_cast<uint64_t>(status.st_size);
    return true;
  }
  ::close(file_);
  file_ = -1;
  return false;
}

size_t PictureFile::read(void* bytes, size_t count) {
  if (failsNow(PlatformCall::read)) failed_ = true;
  size_t done = 0;
  while (!failed_ && done < count) {
    const ssize_t got = ::pread(file_, static_cast<char*>(bytes) + done, count - done,
                                static_cast<off_t>(position_));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) failed_ = true;
    if (got <= 0) break;
    done += static_cast<size_t>(got);
    position_ += static_cast<uint64_t>(got);
  }
  return done;
}

PictureReading::PictureReading(const char* path) {
  open(path, Purpose::reading);
}

PictureWriting::PictureWriting(const char* path) : path_(path) {
  if (!open(path, Purpose::writing) || size_ == 0) return;
  failed_ = ::ftruncate(file_, 0) != 0;
  size_ = 0;
}

PictureWriting::~PictureWriting() {
  if (file_ >= 0) ::unlink(path_);
}

bool PictureWriting::write(const void* bytes, size_t count) {
  if (failsNow(PlatformCall::write)) failed_ = true;
  size_t done = 0;
  while (!failed_ && done < count) {
    const ssize_t put = ::pwrite(file_, static_cast<const char*>(bytes) + done, count - done,
                                 static_cast<off_t>(position_));
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) failed_ = true;
    if (failed_) break;
    done += static_cast<size_t>(put);
    position_ += static_cast<uint64_t>(put);
  }
  if (position_ > size_) size_ = position_;
  return !failed_ || failed();
}

bool PictureWriting::finish() {
  const int file = file_;
  file_ = -1;
  const bool closed = !failsNow(PlatformCall::close);
  if (::close(file) == 0 && closed && !failed_) return true;
  failed();
  ::unlink(path_);
  return false;
}

}  // namespace exifkeep

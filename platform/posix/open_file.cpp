// SPDX-License-Identifier: MIT
#include "open_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

#include "failure_switch.h"

namespace exifkeep {
namespace {

static_assert(sizeof(off_t) == 8, "files over 2 GiB need _FILE_OFFSET_BITS=64");

// Repeats a call that is interrupted by signals.
template <class Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

std::unique_ptr<char[]> copyOf(const char* text) {
  const size_t size = std::strlen(text) + 1;
  std::unique_ptr<char[]> copy(new (std::nothrow) char[size]);
  if (copy) std::memcpy(copy.get(), text, size);
  return copy;
}

}  // namespace

OpenFile::OpenFile() {
  countHandle(1);
}

OpenFile::~OpenFile() {
  const int error = errno;
  if (descriptor_ >= 0) ::close(descriptor_);
  errno = error;
  countHandle(-1);
}

std::unique_ptr<OpenFile> OpenFile::open(const char* path, int flags, mode_t mode) {
  if (failsNow(PlatformCall::open)) return nullptr;
  // Memory is allocated first, because opening may create the file.
  std::unique_ptr<OpenFile> file(new (std::nothrow) OpenFile);
  const bool keepsPath = (flags & O_ACCMODE) == O_RDWR && (flags & O_CREAT) == 0;
  if (file && keepsPath) file->path_ = copyOf(path);
  if (!file || (keepsPath && !file->path_)) {
    errno = ENOMEM;
    return nullptr;
  }
  // Without O_NONBLOCK, opening a FIFO would block.
  const int allFlags = flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  file->descriptor_ = uninterrupted([=] { return ::open(path, allFlags, mode); });
  if (file->descriptor_ < 0) return nullptr;
  file->readable_ = (flags & O_ACCMODE) != O_WRONLY;
  file->writable_ = (flags & O_ACCMODE) != O_RDONLY;
  // A file that was just created is empty, and a failure here could not undo its creation.
  if ((flags & O_EXCL) != 0) file->size_ = 0;
  return !file->writable_ || file->size() >= 0 ? std::move(file) : nullptr;
}

void OpenFile::takeSize() {
  struct stat status;
  if (fstat(descriptor_, &status) != 0) return;
  if (S_ISREG(status.st_mode))
    size_ = status.st_size;
  else
    errno = EACCES;
}

bool OpenFile::read(void* buffer, size_t count, size_t& done) {
  done = 0;
  if (!readable_) errno = EBADF;
  if (!readable_ || failsNow(PlatformCall::read)) return false;
  const size_t wanted =
      size_ < 0 ? count : std::min<uint64_t>(count, std::max<int64_t>(size_ - position_, 0));
  while (done < wanted) {
    char* target = static_cast<char*>(buffer) + done;
    const ssize_t step =
        uninterrupted([&, this] { return pread(descriptor_, target, wanted - done, position_); });
    if (step < 0) return false;
    if (step == 0) break;  // the end, or somebody else has truncated the file
    position_ += step;
    done += step;
  }
  return true;
}

bool OpenFile::write(const void* bytes, size_t count, size_t& done) {
  done = 0;
  if (!writable_) errno = EBADF;
  if (!writable_ || failsNow(PlatformCall::write)) return false;
  while (done < count) {
    const std::byte* source = static_cast<const std::byte*>(bytes) + done;
    const ssize_t step =
        uninterrupted([&, this] { return pwrite(descriptor_, source, count - done, position_); });
    if (step == 0) errno = ENOSPC;
    if (step <= 0) return false;
    position_ += step;
    size_ = std::max(size_, position_);
    done += step;
  }
  return true;
}

bool OpenFile::truncateTo(int64_t size) {
  if (!writable_) errno = EBADF;
  if (!writable_ || failsNow(PlatformCall::write)) return false;
  if (uninterrupted([=, this] { return ftruncate(descriptor_, size); }) != 0) return false;
  size_ = size;
  return true;
}

bool OpenFile::sync() {
  if (!writable_) errno = EBADF;
  if (!writable_ || failsNow(PlatformCall::sync)) return false;
  if (uninterrupted([this] { return fsync(descriptor_); }) == 0) return true;
  // Some file systems do not support this.
  return errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
}

bool OpenFile::close() {
  // Must not be repeated: after EINTR the descriptor is closed and may already belong to another
  // thread.
  const bool closed = ::close(descriptor_) == 0 || errno == EINTR;
  descriptor_ = -1;
  return !failsNow(PlatformCall::close) && closed;
}

}  // namespace exifkeep

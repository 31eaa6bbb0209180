// Reading through the windows, writing past them. A window is filled from a page boundary at or
// before the position: directory values often lie a little before what was read last. Writes go to
// the file at once and are copied into the windows that they overlap.
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

// Repeats a call for as long as signals interrupt it.
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

ssize_t readAt(int descriptor, std::byte* target, size_t count, int64_t position) {
  return uninterrupted([=] { return pread(descriptor, target, count, position); });
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
  // Memory comes first: once the file is open it may already be there, or truncated.
  std::unique_ptr<OpenFile> file(new (std::nothrow) OpenFile);
  const bool keepsPath = (flags & O_ACCMODE) == O_RDWR && (flags & O_CREAT) == 0;
  if (file && keepsPath) file->path_ = copyOf(path);
  if (!file || (keepsPath && !file->path_)) {
    errno = ENOMEM;
    return nullptr;
  }
  // Without O_NONBLOCK, opening a FIFO would wait for its other end.
  const int allFlags = flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  file->descriptor_ = uninterrupted([=] { return ::open(path, allFlags, mode); });
  if (file->descriptor_ < 0) return nullptr;
  // A file made just now needs no look, and a look that fails could not unmake it.
  if ((flags & O_EXCL) == 0 && !file->takeSize()) return nullptr;
  file->readable_ = (flags & O_ACCMODE) != O_WRONLY;
  file->writable_ = (flags & O_ACCMODE) != O_RDONLY;
  return file;
}

// False for what is no regular file.
bool OpenFile::takeSize() {
  struct stat status;
  if (fstat(descriptor_, &status) != 0) return false;
  size_ = status.st_size;
  if (S_ISREG(status.st_mode)) return true;
  errno = EACCES;
  return false;
}

bool OpenFile::readOn(std::byte* target, size_t count, size_t& done) {
  const auto rest = static_cast<uint64_t>(std::max<int64_t>(size_ - position_, 0));
  const size_t wanted = done + std::min<uint64_t>(count - done, rest);
  while (done < wanted) {
    const ssize_t step = readStep(target + done, wanted - done);
    if (step < 0) return false;
    if (step == 0) break;  // someone else cut the file
    done += step;
  }
  return true;
}

// Through a window, unless that would have to be filled more than once.
ssize_t OpenFile::readStep(std::byte* target, size_t count) {
  if (count < window_->bytes.size()) {
    window_ = &windows_[window_ == &windows_[0] ? 1 : 0];
    if (const size_t taken = takeFromWindow(target, count)) return taken;
    return fillWindow() ? static_cast<ssize_t>(takeFromWindow(target, count)) : -1;
  }
  const ssize_t step = readAt(descriptor_, target, count, position_);
  position_ += std::max<ssize_t>(step, 0);
  return step;
}

bool OpenFile::fillWindow() {
  window_->start = position_ - position_ % pageSize;
  const ssize_t length = readAt(descriptor_, window_->bytes.data(), fillSize_, window_->start);
  window_->length = std::clamp<int64_t>(length, 0, size_ - window_->start);
  fillSize_ = window_->bytes.size();
  return length >= 0;
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
    for (Window& window : windows_) updateWindow(window, source, step);
    position_ += step;
    size_ = std::max(size_, position_);
    done += step;
  }
  return true;
}

void OpenFile::updateWindow(Window& window, const std::byte* source, size_t count) const {
  const int64_t windowEnd = window.start + static_cast<int64_t>(window.length);
  const int64_t start = std::max(position_, window.start);
  const int64_t end = std::min(position_ + static_cast<int64_t>(count), windowEnd);
  if (start >= end) return;
  std::memcpy(window.bytes.data() + (start - window.start), source + (start - position_),
              end - start);
}

bool OpenFile::truncateTo(int64_t size) {
  if (!writable_) errno = EBADF;
  if (!writable_ || failsNow(PlatformCall::write)) return false;
  if (uninterrupted([=, this] { return ftruncate(descriptor_, size); }) != 0) return false;
  size_ = size;
  for (Window& window : windows_) {
    const int64_t kept = std::max<int64_t>(size_ - window.start, 0);
    window.length = std::min<int64_t>(window.length, kept);
  }
  return true;
}

bool OpenFile::sync() {
  if (!writable_) errno = EBADF;
  if (!writable_ || failsNow(PlatformCall::sync)) return false;
  if (uninterrupted([this] { return fsync(descriptor_); }) == 0) return true;
  // Not every file system can: it writes when it sees fit, as it does with everybody's files.
  return errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
}

bool OpenFile::close() {
  // Never repeated: after EINTR the descriptor is gone and may already be another thread's.
  const bool closed = ::close(descriptor_) == 0 || errno == EINTR;
  descriptor_ = -1;
  return !failsNow(PlatformCall::close) && closed;
}

}  // namespace exifkeep

// One open regular file: descriptor, 64-bit position, size and two read windows, so that reading
// value by value costs memory copies instead of system calls, also where the values lie at two
// places in turn. Everything behind a file HANDLE.
// Relies on pread and pwrite; the size is that of the opening and of this object's own writes. What
// fails leaves its reason in errno.
#pragma once

#include <sys/types.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "failure_switch.h"

namespace exifkeep {

class OpenFile {
 public:
  // Opens with open(2)'s flags; null when that fails or the path is no regular file.
  static std::unique_ptr<OpenFile> open(const char* path, int flags, mode_t mode);
  ~OpenFile();
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  // `done` is what was transferred, also on failure. Reading past the end delivers less.
  bool read(void* buffer, size_t count, size_t& done) {
    done = 0;
    if (!readable_) errno = EBADF;
    if (!readable_ || failsNow(PlatformCall::read)) return false;
    done = takeFromWindow(static_cast<std::byte*>(buffer), count);
    return done == count || readOn(static_cast<std::byte*>(buffer), count, done);
  }
  bool write(const void* bytes, size_t count, size_t& done);

  // False, and nothing moved, for a position that no file can have.
  bool moveTo(int64_t position) {
    if (position < 0) errno = EINVAL;
    if (position < 0 || failsNow(PlatformCall::seek)) return false;
    position_ = position;
    return true;
  }
  bool truncateTo(int64_t size);
  // On disk, as far as the file system knows how to tell.
  bool sync();
  // False when the system reports a late failure; closed it is in any case.
  bool close();

  int64_t position() const { return position_; }
  int64_t size() const { return size_; }
  int descriptor() const { return descriptor_; }
  // The path that it was opened by; null unless it existed and may be written.
  const char* path() const { return path_.get(); }

 private:
  OpenFile();
  struct Window {
    int64_t start = 0;
    size_t length = 0;                  // no further than the file's size
    std::array<std::byte, 8192> bytes;  // not cleared: only `length` of them count

    // Written out, so that creating an object does not clear the bytes.
    Window() {}
  };

  // What the window used last holds from the position on, if anything, and moves the position
  // behind it.
  size_t takeFromWindow(std::byte* target, size_t count) {
    const auto at = static_cast<uint64_t>(position_ - window_->start);
    if (at >= window_->length) return 0;
    const size_t taken = std::min<size_t>(count, window_->length - at);
    std::memcpy(target, window_->bytes.data() + at, taken);
    position_ += static_cast<int64_t>(taken);
    return taken;
  }
  bool takeSize();
  // Goes on reading where the window ended.
  bool readOn(std::byte* target, size_t count, size_t& done);
  ssize_t readStep(std::byte* target, size_t count);
  bool fillWindow();
  void updateWindow(Window& window, const std::byte* source, size_t count) const;

  static constexpr int64_t pageSize = 4096;

  int descriptor_ = -1;
  std::unique_ptr<char[]> path_;
  bool readable_ = false;
  bool writable_ = false;
  int64_t position_ = 0;
  int64_t size_ = 0;
  // The first window is filled with a page: most pictures have their metadata in it.
  size_t fillSize_ = pageSize;
  std::array<Window, 2> windows_;
  Window* window_ = &windows_[0];  // the one used last
};

}  // namespace exifkeep

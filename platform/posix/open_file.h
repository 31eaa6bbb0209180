// One open regular file: descriptor, 64-bit position and size. Everything behind a file HANDLE.
// Relies on pread and pwrite; the size is that of the opening and of this object's own writes. What
// fails leaves its reason in errno.
#pragma once

#include <sys/types.h>
#include <windows.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
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
  bool read(void* buffer, size_t count, size_t& done);
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
  bool takeSize();

  int descriptor_ = -1;
  std::unique_ptr<char[]> path_;
  bool readable_ = false;
  bool writable_ = false;
  int64_t position_ = 0;
  int64_t size_ = 0;
};

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// The object of a file HANDLE: an open file with descriptor, 64-bit position and size. The size is
// that when the file was opened or, if it is only read, when the size was first asked for, updated
// by writes of this object. After a failure errno is set.
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
  // Opens a file with the flags of open(2). Null if that fails or if it can be written and is not a
  // regular file.
  static std::unique_ptr<OpenFile> open(const char* path, int flags, mode_t mode);
  ~OpenFile();
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  // `done` is set to the number of bytes transferred, also on failure. At the end of the file fewer
  // bytes are read.
  bool read(void* buffer, size_t count, size_t& done);
  bool write(const void* bytes, size_t count, size_t& done);

  // False, with the position unchanged, if the position is invalid.
  bool moveTo(int64_t position) {
    if (position < 0) errno = EINVAL;
    if (position < 0 || failsNow(PlatformCall::seek)) return false;
    position_ = position;
    return true;
  }
  bool truncateTo(int64_t size);
  // Waits until the file is on disk, if the file system supports it.
  bool sync();
  // Closes the file in any case. False if the system reports an error.
  bool close();

  int64_t position() const { return position_; }
  // -1 if it is not a regular file.
  int64_t size() {
    if (size_ < 0) takeSize();
    return size_;
  }
  int descriptor() const { return descriptor_; }
  // The path by which it was opened; null if it was created or is only read.
  const char* path() const { return path_.get(); }

 private:
  OpenFile();
  void takeSize();

  int descriptor_ = -1;
  std::unique_ptr<char[]> path_;
  bool readable_ = false;
  bool writable_ = false;
  int64_t position_ = 0;
  int64_t size_ = -1;  // unknown
};

}  // namespace exifkeep

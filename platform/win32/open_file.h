// One open regular file: descriptor, 64-bit position, size and one read window, so that reading
// value by value costs memory copies instead of system calls. Everything behind a file HANDLE.
// Relies on pread and pwrite; the size is that of the opening and of this object's own writes.
#pragma once

#include <sys/types.h>
#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace exifkeep {

class OpenFile {
 public:
  // Opens with open(2)'s flags; null when that fails or the path is no regular file.
  static std::unique_ptr<OpenFile> open(const char* path, int flags, mode_t mode);
  ~OpenFile();
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  // `done` is what was transferred, also on failure. Reading past the end delivers less.
  bool read(void* buffer, std::size_t count, std::size_t& done);
  bool write(const void* bytes, std::size_t count, std::size_t& done);

  // `origin` is FILE_BEGIN, FILE_CURRENT or FILE_END. False, and nothing moved, before the start.
  bool seek(std::int64_t distance, DWORD origin);
  bool truncateHere();
  bool sync();
  // False when the system reports a late failure; closed it is in any case.
  bool close();

  std::int64_t position() const { return position_; }
  std::int64_t size() const { return size_; }
  int descriptor() const { return descriptor_; }

 private:
  OpenFile();
  std::size_t takeFromWindow(std::byte* target, std::size_t count) const;
  ssize_t fillWindow();
  ssize_t readOn(std::byte* target, std::size_t count);
  void updateWindow(const std::byte* source, std::size_t count);

  static constexpr std::int64_t pageSize = 4096;

  int descriptor_ = -1;
  bool readable_ = false;
  bool writable_ = false;
  std::int64_t position_ = 0;
  std::int64_t size_ = 0;
  std::int64_t windowStart_ = 0;
  std::size_t windowLength_ = 0;
  // The first window is a page: most pictures have their metadata in it.
  std::size_t fillSize_ = pageSize;
  std::array<std::byte, 16384> window_;  // not cleared: only windowLength_ bytes of it count
};

}  // namespace exifkeep

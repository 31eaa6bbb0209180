// A file on disk by position: opened, sized, read and written in 64 bits and closed with its
// object.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

namespace exifkeep {

class DiskFile {
 public:
  // Opens an existing file, shared for reading and writing.
  static DiskFile openForReading(const char* path);  // for writing too where that is allowed
  static DiskFile openForWriting(const char* path);  // for reading and writing
  // Creates the file anew, or empties it; not shared.
  static DiskFile create(const char* path);

  DiskFile(DiskFile&& other) noexcept;
  DiskFile& operator=(DiskFile&& other) noexcept;
  ~DiskFile();

  bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  // The size when it was opened.
  uint64_t size() const { return size_; }

  // Copies up to `length` bytes from position `at`; returns how many the file had there.
  size_t readAt(uint64_t at, void* destination, size_t length);
  // True when all bytes were written; a short write is a failure.
  bool writeAt(uint64_t at, const void* bytes, size_t length);
  // True when everything written is on disk.
  bool flush();
  // True when the file was open and closing reported no late error.
  bool close();

 private:
  explicit DiskFile(HANDLE handle);

  HANDLE handle_;
  uint64_t size_ = 0;
};

}  // namespace exifkeep

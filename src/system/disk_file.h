// A file on disk by position: opened, sized, read and written in 64 bits and closed with its
// object. It remembers the first error that the system reported; the end of the file is none.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace exifkeep {

class DiskFile {
 public:
  // An existing file, shared for reading and writing.
  static DiskFile openForReading(const char* path);
  static DiskFile openForWriting(const char* path);  // reading too
  // A file where there is none, for reading and writing; not shared. After a `pattern` it has the
  // rights and attributes of that file, as far as they can be given.
  static DiskFile createNew(const char* path, const DiskFile* pattern = nullptr);

  DiskFile(DiskFile&& other) noexcept;
  DiskFile& operator=(DiskFile&& other) noexcept;
  ~DiskFile();

  bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  // ERROR_SUCCESS when nothing has failed so far. A file that is not open says why; one
  // whose size cannot be told is not open.
  DWORD error() const { return error_; }
  // The size when it was opened, and by what has been written since.
  uint64_t size() const { return size_; }
  // The file's path behind all links; empty when it cannot be told. REQUIRES: openForWriting.
  std::string finalPath() const;

  // Copies up to `length` bytes from position `at`; returns how many the file had there.
  size_t readAt(uint64_t at, void* destination, size_t length);
  // True when all bytes were written; a short write is a failure.
  bool writeAt(uint64_t at, const void* bytes, size_t length);
  // Cuts the file or lengthens it with zeros.
  bool setSize(uint64_t size);
  // True when everything written is on disk.
  bool flush();
  // True when the file was open and closing reported no late error.
  bool close();

 private:
  explicit DiskFile(HANDLE handle);
  // Closes the file when its size cannot be told.
  void takeSize();
  // Keeps the system's error when `succeeded` is false, and returns it.
  bool check(bool succeeded);

  HANDLE handle_;
  DWORD error_ = ERROR_SUCCESS;
  uint64_t size_ = 0;
};

}  // namespace exifkeep

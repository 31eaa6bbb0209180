// SPDX-License-Identifier: MIT
// A file on disk, read and written by 64-bit position and closed with its object. It keeps the
// first error that the system reported; the end of the file is not one.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace exifkeep {

class DiskFile {
 public:
  // None.
  DiskFile() = default;
  // An existing file, shared for reading and writing.
  static DiskFile openForReading(const char* path);
  static DiskFile openForWriting(const char* path);  // and for reading; its size is known
  // Creates a file, which must not exist, for reading and writing; not shared. If a `pattern` is
  // given, the file gets its rights and attributes as far as possible.
  static DiskFile createNew(const char* path, const DiskFile* pattern = nullptr);

  DiskFile(DiskFile&& other) noexcept;
  DiskFile& operator=(DiskFile&& other) noexcept;
  ~DiskFile();

  bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  // The first error, also that of opening; ERROR_SUCCESS if nothing has failed.
  DWORD error() const { return error_; }
  // The size when this was first called, updated by writes since. If it cannot be determined, for
  // instance that of a directory, the file is closed and its size is 0. Reading does not need the
  // size: finding it out takes a fifth of the time of a short call.
  uint64_t size();
  // The file's path with all links resolved, or empty. REQUIRES: openForWriting.
  std::string finalPath() const;

  // Reads up to `length` bytes at position `at`; returns how many there were.
  size_t readAt(uint64_t at, void* destination, size_t length);
  // True if all bytes were written.
  bool writeAt(uint64_t at, const void* bytes, size_t length);
  // Truncates the file or extends it with zeros.
  bool setSize(uint64_t size);
  // True if everything written is on disk.
  bool flush();
  // True if the file was open and closing it reported no error.
  bool close();

 private:
  DiskFile(HANDLE handle, bool isNew);
  // Records the system's error if `succeeded` is false; returns `succeeded`.
  bool check(bool succeeded);

  HANDLE handle_ = INVALID_HANDLE_VALUE;
  DWORD error_ = ERROR_SUCCESS;
  bool isSizeKnown_ = true;
  uint64_t size_ = 0;
};

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// A picture file that is being read, through which the three codec libraries get all their input.
// Has its own position. Only regular files can be opened.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

namespace exifkeep {

class PictureReading {
 public:
  explicit PictureReading(const char* path);
  ~PictureReading();
  PictureReading(const PictureReading&) = delete;
  PictureReading& operator=(const PictureReading&) = delete;

  bool isOpen() const { return file_ != INVALID_HANDLE_VALUE; }
  uint64_t size() const { return size_; }
  uint64_t position() const { return position_; }
  void moveTo(uint64_t position) { position_ = position; }

  // Reads at the position. Returns fewer bytes only at the end of the file or on an error.
  size_t read(void* bytes, size_t count);
  // Whether any read has failed; the libraries ignore some errors.
  bool hasFailed() const { return failed_; }

 private:
  HANDLE file_;
  uint64_t size_ = 0;
  uint64_t position_ = 0;
  bool failed_ = false;
};

}  // namespace exifkeep

// An open picture file as the metadata readers see it: its bytes by position, its numbers in its
// byte order, its TIFF offsets from its TIFF header. These reads are the only ones that the readers
// make; a value that the file does not hold whole is never stored.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

#include "system/disk_file.h"

namespace exifkeep {

class ExifFile {
 public:
  explicit ExifFile(const char* path) : file_(DiskFile::openForReading(path)) {}
  explicit ExifFile(DiskFile file) : file_(std::move(file)) {}

  bool isOpen() const { return file_.isOpen(); }
  // Why it is not open, or what the system first failed to read; the end of the file is no error.
  DWORD error() const { return file_.error(); }
  uint64_t size() const { return file_.size(); }

  // The byte order that the mark at `at` names, true for little-endian; none for no such mark (TIFF
  // 6.0, section 2).
  std::optional<bool> byteOrderAt(uint64_t at);
  // Where the TIFF header lies and the byte order it names.
  void setLayout(uint32_t tiffBase, bool littleEndian);
  bool littleEndian() const { return littleEndian_; }
  // The file position of a TIFF offset; 64 bits, so it cannot wrap.
  uint64_t positionOf(uint32_t tiffOffset) const { return tiffBase_ + tiffOffset; }

  // Copies up to `length` bytes from file position `at`; returns how many the file had there.
  size_t readAt(uint64_t at, void* destination, size_t length) {
    return file_.readAt(at, destination, length);
  }
  // Reads a number in the file's byte order. False, and `value` untouched, when the file ends
  // first.
  bool read(uint64_t at, uint16_t& value);
  bool read(uint64_t at, uint32_t& value);

  // Numbers in the file's byte order from bytes already read. Both orders are spelt out, so that
  // each is one load.
  uint16_t toShort(const uint8_t* bytes) const {
    const auto little = static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
    const auto big = static_cast<uint16_t>(bytes[0] << 8 | bytes[1]);
    return littleEndian_ ? little : big;
  }
  uint32_t toLong(const uint8_t* bytes) const {
    const uint32_t b0 = bytes[0], b1 = bytes[1], b2 = bytes[2], b3 = bytes[3];
    const uint32_t little = b0 | b1 << 8 | b2 << 16 | b3 << 24;
    const uint32_t big = b0 << 24 | b1 << 16 | b2 << 8 | b3;
    return littleEndian_ ? little : big;
  }

 private:
  DiskFile file_;
  uint64_t tiffBase_ = 0;
  bool littleEndian_ = true;
};

}  // namespace exifkeep

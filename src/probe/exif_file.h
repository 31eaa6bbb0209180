// SPDX-License-Identifier: MIT
// An open picture file for the metadata readers, with its byte order and the position from which
// its TIFF offsets count. All metadata is read through this class; a value that is not completely
// in the file is never stored. Reads go through two windows, so that reading values one by one
// needs few system calls, even if they alternate between two places.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>

#include "system/disk_file.h"

namespace exifkeep {

class ExifFile {
 public:
  explicit ExifFile(const char* path) : file_(DiskFile::openForReading(path)) {}
  // A file in memory, which must outlive this object.
  explicit ExifFile(std::span<const uint8_t> memory) : memory_(memory), end_(memory.size()) {}
  ExifFile(const ExifFile&) = delete;
  ExifFile& operator=(const ExifFile&) = delete;

  bool isOpen() const { return memory_.data() || file_.isOpen(); }
  // Why it is not open, or the first read error; the end of the file is no error.
  DWORD error() const { return file_.error(); }
  // See DiskFile.
  uint64_t size() { return memory_.data() ? memory_.size() : file_.size(); }

  // The byte order given by the mark at `at`, true for little-endian; none if there is no such mark
  // (TIFF 6.0, section 2).
  std::optional<bool> byteOrderAt(uint64_t at);
  // Sets the position and byte order of the TIFF header.
  void setLayout(uint32_t tiffBase, bool littleEndian);
  bool littleEndian() const { return littleEndian_; }
  // The file position of a TIFF offset; in 64 bits it cannot overflow.
  uint64_t positionOf(uint32_t tiffOffset) const { return tiffBase_ + tiffOffset; }

  // Up to `length` bytes at file position `at`, as many as there are; valid until the next read and
  // never null.
  // REQUIRES: length <= maxView.
  static constexpr size_t maxView = 4096;
  std::span<const uint8_t> bytesAt(uint64_t at, size_t length) {
    if (!window_->holds(at, length)) return moveWindow(at, length);
    return {window_->bytes + (at - window_->start), length};
  }
  // Reads up to `length` bytes at file position `at`; returns how many there were.
  size_t readAt(uint64_t at, void* destination, size_t length) {
    if (length > maxView && !memory_.data()) return file_.readAt(at, destination, length);
    const std::span<const uint8_t> bytes = bytesAt(at, length);
    std::memcpy(destination, bytes.data(), bytes.size());
    return bytes.size();
  }
  // Reads a number in the file's byte order. False, with `value` unchanged, if the file ends first.
  bool read(uint64_t at, uint16_t& value);
  bool read(uint64_t at, uint32_t& value);

  // Numbers in the file's byte order. Both orders are spelled out so that each compiles to one
  // load.
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
  // Filled from the last page boundary before the position, because values are often shortly before
  // what was read last.
  static constexpr size_t pageSize = 4096;
  struct Window {
    Window() {}  // the bytes are not cleared: only `length` of them count
    bool holds(uint64_t at, size_t count) const {
      return at - start <= length && count <= length - (at - start);
    }
    uint64_t start = 0;
    size_t length = 0;
    size_t fillSize = pageSize;  // first only a page, enough for the metadata of most pictures
    uint8_t bytes[pageSize + maxView];
  };
  // The rest of bytesAt, if the window used last does not have all bytes.
  std::span<const uint8_t> moveWindow(uint64_t at, size_t length);

  DiskFile file_;
  std::span<const uint8_t> memory_;
  uint64_t end_ = INT64_MAX;  // no bytes from here on: the largest file, or what a read has shown
  uint64_t tiffBase_ = 0;
  bool littleEndian_ = true;
  Window windows_[2];
  Window* window_ = &windows_[0];  // the window used last
};

}  // namespace exifkeep

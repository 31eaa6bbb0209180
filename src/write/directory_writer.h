// SPDX-License-Identifier: MIT
// Writes TIFF directories into a block: entry count, entries, link, then directly the value area
// with all values that are not in their entry. It alone decides where values go, how they are
// padded and whether they still fit. Failure is sticky: if something does not fit, nothing more is
// written, and the caller checks once at the end. Numbers are always little-endian.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "write/output_rows.h"
#include "write/row_context.h"

namespace exifkeep {

// Writes one 12-byte entry (TIFF 6.0, section 2).
void writeIfdEntry(uint8_t* destination, uint16_t tag, TiffType type, uint32_t count,
                   uint32_t value);

// Copies `length` bytes; nothing if it is 0 or negative.
void copyBytes(uint8_t* destination, const void* source, int32_t length);

class DirectoryWriter {
 public:
  static constexpr uint32_t blockSize = 65536;

  // `block` has blockSize zero bytes; TIFF offsets count from `tiffHeader` in it.
  DirectoryWriter(uint8_t* block, uint32_t tiffHeader) : block_(block), tiffHeader_(tiffHeader) {}

  bool hasFailed() const { return hasFailed_; }
  // The length so far: the block offset after everything written.
  uint32_t length() const { return length_; }
  uint32_t tiffOffset(uint32_t blockOffset) const { return blockOffset - tiffHeader_; }

  // Bytes outside any directory; `advance` is for bytes that the caller has stored itself.
  void append(const void* bytes, uint32_t length);
  void advance(uint32_t length);
  // Where append would write; null if `length` bytes do not fit.
  uint8_t* room(uint32_t length);

  // Appends a directory and its value area; returns its block offset. The entries are those rows
  // whose condition holds for `record`.
  uint32_t writeDirectory(OutputRows rows, const void* record, const RowContext& context);

  // Fill in what was written as 0: the value of a pointer row, the link to the next directory.
  void setValue(uint32_t directory, uint16_t tag, uint32_t value);
  void setNextDirectory(uint32_t directory, uint32_t next);

 private:
  void writeRow(const OutputRow& row, const void* record, const RowContext& context);
  void writeResolution(const OutputRow& row, const void* record, const RowContext& context);
  void writeRecordValue(const OutputRow& row, const void* record);
  void writeMakerNote(const OutputRow& row, const ExifIfdRecord& exif);
  void writeNoteOrZeros(const OutputRow& row, const void* record);
  void writeUserComment(const OutputRow& row, const ExifIfdRecord& exif);
  void writeSubjectArea(const OutputRow& row, const ExifIfdRecord& exif);

  // Write an entry, with its value either in it or in the value area.
  void putInEntry(const OutputRow& row, uint32_t count, uint32_t value);
  void putSupplied(OutputRow row, uint32_t number);
  void putBytesInEntry(const OutputRow& row, uint32_t count, const void* bytes, size_t length);
  void putText(const OutputRow& row, std::string_view text);
  void putRationals(const OutputRow& row, const void* pairs, uint32_t count);
  void putShorts(const OutputRow& row, const void* shorts, uint32_t count);
  // Reserves `size` bytes of the value area, padded to an even size, and points the entry to them;
  // null if they do not fit.
  uint8_t* putInArea(const OutputRow& row, uint32_t count, uint64_t size);

  uint8_t* block_;
  uint32_t tiffHeader_;
  uint32_t length_ = 0;
  uint32_t entry_ = 0;  // block offset of the next entry
  bool hasFailed_ = false;
};

}  // namespace exifkeep

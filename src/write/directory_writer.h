// Writes TIFF directories into a block: entry count, entries, link, then at once the value area
// with every value that does not sit in its entry. It alone decides where values go, how they are
// padded and whether the block still holds them. Failure is sticky: once something did not fit
// nothing more is written, and the caller asks once, at the end. Numbers are little-endian whatever
// the host is.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "write/output_rows.h"

namespace exifkeep {

// Writes one 12-byte entry (TIFF 6.0, section 2).
void writeIfdEntry(uint8_t* destination, uint16_t tag, TiffType type, uint32_t count,
                   uint32_t value);

// Copies `length` bytes; nothing when it is 0 or negative.
void copyBytes(uint8_t* destination, const void* source, int32_t length);

// Values of a directory that come from elsewhere than its record.
struct RowContext {
  char now[20] = {};  // YYYY:MM:DD HH:MM:SS
  Rational xResolution = {0, 1};
  Rational yResolution = {0, 1};
  std::array<uint32_t, static_cast<size_t>(Supplied::count)> supplied = {};

  uint32_t& operator[](Supplied what) { return supplied[static_cast<size_t>(what)]; }
};

class DirectoryWriter {
 public:
  static constexpr uint32_t blockSize = 65536;

  // `block` has blockSize zero bytes; TIFF offsets count from `tiffHeader` in it.
  DirectoryWriter(uint8_t* block, uint32_t tiffHeader) : block_(block), tiffHeader_(tiffHeader) {}

  bool hasFailed() const { return hasFailed_; }
  // The running length: the block offset behind everything written so far.
  uint32_t length() const { return length_; }
  uint32_t tiffOffset(uint32_t blockOffset) const { return blockOffset - tiffHeader_; }

  // Bytes that belong to no directory. `advance` counts bytes that someone else put there.
  void append(const void* bytes, uint32_t length);
  void advance(uint32_t length);
  // Where append would write; null when `length` bytes do not fit.
  uint8_t* room(uint32_t length);

  // Writes a directory and its value area at the running length; returns its block offset. The
  // entry count is that of the rows whose condition holds for `record`.
  uint32_t writeDirectory(OutputRows rows, const void* record, const RowContext& context);

  // Fills in what was written as 0: a pointer row's value, a directory's link to the next one.
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

  // The forms of a value: in the entry, or in the value area.
  void putInEntry(const OutputRow& row, uint32_t count, uint32_t value);
  void putSupplied(OutputRow row, uint32_t number);
  void putBytesInEntry(const OutputRow& row, uint32_t count, const void* bytes, size_t length);
  void putText(const OutputRow& row, std::string_view text);
  void putRationals(const OutputRow& row, const void* pairs, uint32_t count);
  void putShorts(const OutputRow& row, const void* shorts, uint32_t count);
  // Reserves `size` bytes of value area, padded to an even size, and points the entry at them; null
  // when they do not fit.
  uint8_t* putInArea(const OutputRow& row, uint32_t count, uint64_t size);

  uint8_t* block_;
  uint32_t tiffHeader_;
  uint32_t length_ = 0;
  uint32_t entry_ = 0;  // block offset of the next entry
  bool hasFailed_ = false;
};

}  // namespace exifkeep

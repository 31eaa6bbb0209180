// The 12-byte entries of one TIFF directory (TIFF 6.0, section 2), one after the other. The entry
// count is a signed 16-bit number: 0, negative or missing means no entries.
#pragma once

#include <cstdint>

#include "probe/exif_file.h"

namespace exifkeep {

struct IfdEntry {
  uint16_t tag;
  uint16_t type;
  uint32_t count;
  uint8_t value[4];  // the value field, in the file's byte order
  uint32_t length;   // bytes of the entry that the file holds: 12, fewer for the file's last; what
                     // is missing is zero

  static constexpr uint32_t size = 12;
  static constexpr uint32_t valuePosition = 8;
  bool hasValueBytes(uint32_t bytes) const { return length >= valuePosition + bytes; }
};

class DirectoryEntries {
 public:
  // REQUIRES: `file` outlives this object.
  DirectoryEntries(ExifFile& file, uint64_t position);

  // The next entry of which the file holds the tag at least; false at the end.
  bool next(IfdEntry& entry);
  // Where the entries end and the offset of the next directory stands.
  uint64_t endPosition() const { return position_ + IfdEntry::size * static_cast<int64_t>(count_); }

 private:
  // Entries are read in runs, so that values fetched between them do not move the file's read
  // window to and fro.
  static constexpr int32_t runLength = 32;
  static constexpr uint32_t countSize = 2;

  bool holdsNextTag() const { return next_ + sizeof IfdEntry::tag <= end_; }
  size_t read(uint64_t position, uint8_t* target, size_t length);
  void readRun();
  // `held`: the bytes that bytes_ holds of the run.
  void beginRun(size_t held);

  ExifFile& file_;
  uint64_t position_;  // of the first entry
  int32_t count_ = 0;
  int32_t taken_ = 0;  // the entries of all runs so far
  size_t next_ = 0;    // the next entry in bytes_, and where the entries held there end
  size_t end_ = 0;
  uint8_t bytes_[countSize + runLength * IfdEntry::size];  // the count, and a run behind it
};

}  // namespace exifkeep

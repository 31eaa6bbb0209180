// SPDX-License-Identifier: MIT
// Iterates over the 12-byte entries of a TIFF directory (TIFF 6.0, section 2). The entry count is
// taken as a signed 16-bit number: 0, negative or missing means no entries.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "probe/exif_file.h"

namespace exifkeep {

struct IfdEntry {
  uint16_t tag;
  uint16_t type;
  uint32_t count;
  uint8_t value[4];  // the value field, in the file's byte order
  uint32_t length;   // bytes of the entry in the file: 12, or fewer if the file ends; the rest is 0

  static constexpr uint32_t size = 12;
  static constexpr uint32_t valuePosition = 8;
  bool hasValueBytes(uint32_t bytes) const { return length >= valuePosition + bytes; }
};

class DirectoryEntries {
 public:
  // REQUIRES: `file` outlives this object.
  DirectoryEntries(ExifFile& file, uint64_t position);

  // Gets the next entry of which the file has at least the tag; false at the end.
  bool next(IfdEntry& entry) {
    if (!reachNextTag()) return false;
    const uint8_t* bytes = bytes_ + next_;
    entry.length = static_cast<uint32_t>(std::min<size_t>(end_ - next_, IfdEntry::size));
    next_ += IfdEntry::size;
    entry.tag = file_.toShort(bytes);
    entry.type = file_.toShort(bytes + 2);
    entry.count = file_.toLong(bytes + 4);
    std::memcpy(entry.value, bytes + IfdEntry::valuePosition, sizeof entry.value);
    return true;
  }
  // Gets the next entry with this tag, without looking at the values of the others.
  bool find(uint16_t tag, IfdEntry& entry) {
    for (; reachNextTag(); next_ += IfdEntry::size)
      if (file_.toShort(bytes_ + next_) == tag) return next(entry);
    return false;
  }
  // The position after the entries, where the offset of the next directory is.
  uint64_t endPosition() const { return position_ + IfdEntry::size * static_cast<int64_t>(count_); }

 private:
  // Entries are read in runs, so that reading their values does not move the file's read window
  // back and forth.
  static constexpr int32_t runLength = 32;
  static constexpr uint32_t countSize = 2;

  bool holdsNextTag() const { return next_ + sizeof IfdEntry::tag <= end_; }
  // Reads the next run if the current one has ended.
  bool reachNextTag() {
    if (!holdsNextTag() && taken_ < count_) readRun();
    return holdsNextTag();
  }
  void readRun();

  ExifFile& file_;
  uint64_t position_;  // of the first entry
  int32_t count_ = 0;
  int32_t taken_ = 0;  // the entries of all runs so far
  size_t next_ = 0;    // the next entry in bytes_, and the end of the entries there
  size_t end_ = 0;
  uint8_t bytes_[runLength * IfdEntry::size];
};

}  // namespace exifkeep

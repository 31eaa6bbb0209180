// SPDX-License-Identifier: MIT
// The engine that decodes all directories: it walks the entries and decodes each according to its
// row in the tag table. Unknown tags are skipped, and no content of a file makes it fail.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "probe/directory_entries.h"
#include "read/tag_tables.h"

namespace exifkeep {

// A table and its perfect hash: the compiler finds a multiplier that sends every tag of the table
// to a slot of its own. (A binary search mispredicts branches, which costs more than decoding the
// rest of the entry.)
class TagIndex {
 public:
  consteval explicit TagIndex(TagTable rows) : rows_(rows) {
    while (!everyTagHasItsSlot()) multiplier_ += 2;
  }
  // The row of `tag`, or null.
  const TagRow* find(uint16_t tag) const {
    const TagRow& row = rows_[slots_[slotOf(tag)]];
    return row.tag == tag ? &row : nullptr;
  }

 private:
  constexpr uint8_t slotOf(uint16_t tag) const { return (tag * multiplier_ & 0xFFFF) >> 8; }
  constexpr bool everyTagHasItsSlot() {
    slots_ = {};
    bool taken[256] = {};
    for (size_t i = 0; i < rows_.size(); ++i) {
      const uint8_t slot = slotOf(rows_[i].tag);
      if (taken[slot]) return false;
      taken[slot] = true;
      slots_[slot] = static_cast<uint8_t>(i);
    }
    return true;
  }

  TagTable rows_;
  uint32_t multiplier_ = 1;
  std::array<uint8_t, 256> slots_ = {};  // row indices; 0 in unused slots
};

inline constexpr TagIndex imageIndex(imageTags);
inline constexpr TagIndex exifIndex(exifTags);
inline constexpr TagIndex gpsIndex(gpsTags);
inline constexpr TagIndex interoperabilityIndex(interoperabilityTags);

// Entries whose values are loaded after the walk, so that a file that repeats them ten thousand
// times costs one load of each. The last one counts, as if all were loaded in turn.
struct DeferredEntries {
  std::optional<IfdEntry> makerNote;
  std::optional<IfdEntry> userComment;

  // Remembers the most recent distinct interoperability offsets, in the order of their last
  // occurrence.
  void noteInteroperability(uint32_t offset);
  static constexpr size_t maxOffsets = 16;
  std::array<uint32_t, maxOffsets> interoperability;
  size_t interoperabilityCount = 0;
};

// A walk over one directory: while (walk.next()) walk.decodeEntry(...).
class DirectoryWalk {
 public:
  // REQUIRES: `file` outlives this object.
  DirectoryWalk(ExifFile& file, uint64_t position);

  // Moves to the next entry; false at the end.
  bool next() { return entries_.next(entry_); }
  uint16_t tag() const { return entry_.tag; }

  // Decodes the entry into `record`, whose type is that of `tags`. `deferred` may be null for
  // tables without deferred rows. REQUIRES: is called once for each entry, unless only values that
  // are always in their entries are decoded.
  void decodeEntry(const TagIndex& tags, void* record, DeferredEntries* deferred = nullptr);

 private:
  static constexpr uint32_t linkSize = 4;

  // In TIFF 6.0 a value of up to four bytes is in its entry, and cameras follow this. This
  // library's writers put texts and lists of SHORTs at an offset whatever their size. The value is
  // taken from the entry unless its bytes are exactly the offset that our writers would have used;
  // texts must also look like text, and SHORTs must not look like an offset. This function checks
  // the last two conditions; `position` is where the value would be if its bytes were an offset.
  // REQUIRES: a value of up to four bytes.
  bool holdsValue(const TagRow& row, uint64_t position) const;

  // Whether the value is in the entry itself; otherwise moves `valueArea_`. `row` is null for an
  // unknown tag.
  bool locateValue(const TagRow* row);

  ExifFile& file_;
  DirectoryEntries entries_;
  IfdEntry entry_;
  // Where our writers would put the next value: after the directory or after the previous value in
  // the value area, padded to an even size.
  uint64_t valueArea_;
};

}  // namespace exifkeep

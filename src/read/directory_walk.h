// The one engine that decodes directories: it walks the entries of a directory and applies to each
// the row of its tag table. Unknown tags are passed over; nothing that a file holds makes it fail.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "probe/directory_entries.h"
#include "read/tag_tables.h"

namespace exifkeep {

// Entries whose values are loaded when the directory has been walked, so that a file that repeats
// them ten thousand times costs one load of each: a later one replaces an earlier one, as it would
// if each were loaded in turn.
struct DeferredEntries {
  std::optional<IfdEntry> makerNote;
  std::optional<IfdEntry> userComment;

  // The last different interoperability offsets, in the order of their last occurrence.
  void noteInteroperability(uint32_t offset);
  static constexpr size_t maxOffsets = 16;
  std::array<uint32_t, maxOffsets> interoperability;
  size_t interoperabilityCount = 0;
};

// The walk over one directory: `while (walk.next())` decode the entry.
class DirectoryWalk {
 public:
  // REQUIRES: `file` outlives this object.
  DirectoryWalk(ExifFile& file, uint64_t position);

  // Goes on to the next entry; false at the end.
  bool next();

  // Decodes the entry into `record`, the record of `tags`. `deferred` may be null for tables
  // without such rows. REQUIRES: called once for each entry.
  void decodeEntry(const TagIndex& tags, void* record, DeferredEntries* deferred = nullptr);

 private:
  static constexpr uint32_t linkSize = 4;

  // TIFF 6.0 keeps a value of up to four bytes in its entry, and so do cameras. This library's
  // writers put texts and lists of SHORTs at an offset whatever their size. True when the entry
  // holds the value of `row` itself: not when its number is the offset that our writers would have
  // given it, else when it looks like text, or like no offset of ours in a list of SHORTs.
  bool isInEntry(const TagRow& row) const;
  void passValue(const TagRow* row);
  uint64_t valuePosition() const { return file_.positionOf(file_.toLong(entry_.value)); }

  ExifFile& file_;
  DirectoryEntries entries_;
  IfdEntry entry_;
  // Where our writers would put the next value: after the directory, then after the last value that
  // is not in its entry, each padded to an even size.
  uint64_t valueArea_;
};

}  // namespace exifkeep

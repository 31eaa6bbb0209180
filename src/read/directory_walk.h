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

// Decodes one entry into `record`, the record of `tags`. `deferred` may be null for tables without
// such rows.
void decodeEntry(ExifFile& file, const IfdEntry& entry, const TagIndex& tags, void* record,
                 DeferredEntries* deferred = nullptr);

// Decodes all entries of the directory at `position`.
void decodeDirectory(ExifFile& file, uint64_t position, const TagIndex& tags, void* record,
                     DeferredEntries* deferred = nullptr);

}  // namespace exifkeep

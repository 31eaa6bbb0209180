// Replaces a file by a finished one. An existing destination keeps its bytes whatever fails: it is
// never deleted or truncated, and not touched before the new file is complete and on disk.
//
// Usually the new file is created beside the destination, with the same rights, and renamed over
// it, so that the destination is always either the old file or the new one. Only where the folder
// does not permit a new file or the destination's name cannot be given to another file (for a
// lasting reason, such as missing rights or a mount) are the old bytes overwritten. A copy of them
// is kept until the new ones are on disk, and restored if that fails.
#pragma once

#include <cstdint>
#include <span>

#include "system/disk_file.h"

namespace exifkeep {

// Part of a new file: bytes in memory, or a range of another file.
struct Piece {
  explicit Piece(std::span<const uint8_t> memory) : bytes(memory.data()), size(memory.size()) {}
  Piece(DiskFile& source, uint64_t position, uint64_t length)
      : file(&source), at(position), size(length) {}

  const uint8_t* bytes = nullptr;
  DiskFile* file = nullptr;
  uint64_t at = 0;
  uint64_t size;
};

// Writes the pieces in order over a file, from its start.
bool writePieces(DiskFile& file, std::span<const Piece> pieces);

// Makes `destination` a file of these bytes. An existing file must be readable and writable. Links
// are followed; a dangling one is refused. On failure returns false and changes nothing.
bool deliver(const char* destination, std::span<const Piece> pieces);

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
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

// Produces a part of a new file while writing it.
class PieceWriter {
 public:
  // Appends the part to the file. Called again with another file if the first one cannot replace
  // the destination.
  virtual bool appendTo(DiskFile& file) const = 0;

 protected:
  ~PieceWriter() = default;
};

// Part of a new file.
struct Piece {
  explicit Piece(std::span<const uint8_t> memory) : bytes(memory) {}
  explicit Piece(const PieceWriter& made) : writer(&made) {}

  std::span<const uint8_t> bytes;
  const PieceWriter* writer = nullptr;
};

// Makes `destination` a file of these pieces. An existing file must be readable and writable. Links
// are followed; a dangling one is refused. On failure returns false and changes nothing.
bool deliver(const char* destination, std::span<const Piece> pieces);

}  // namespace exifkeep

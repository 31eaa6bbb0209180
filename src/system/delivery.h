// Puts a finished file in its place. Whatever fails, an existing destination keeps its bytes: it is
// neither deleted nor emptied on any path, and not touched before the new file is whole and on
// disk.
//
// Most files are replaced: the new one is made beside the destination, with its rights, and renamed
// over it, so that the destination is the old file or the new one at every moment. Only where the
// folder admits no new file or the destination's name may not be given to another (for a reason
// that will not pass, such as missing rights or a mount) are the new bytes written over the old
// ones. The old ones are then kept aside until the new ones are on disk, and put back when that
// fails.
#pragma once

#include <cstdint>
#include <span>

#include "system/disk_file.h"

namespace exifkeep {

// Some of a new file's bytes: from memory, or a range of another file.
struct Piece {
  explicit Piece(std::span<const uint8_t> memory) : bytes(memory.data()), size(memory.size()) {}
  Piece(DiskFile& source, uint64_t position, uint64_t length)
      : file(&source), at(position), size(length) {}

  const uint8_t* bytes = nullptr;
  DiskFile* file = nullptr;
  uint64_t at = 0;
  uint64_t size;
};

// Writes the pieces one behind the other over a file, from its start.
bool writePieces(DiskFile& file, std::span<const Piece> pieces);

// Gives `destination` these bytes. What exists there has to be a file that may be read and written;
// links are followed, and one that leads nowhere is refused. False, and nothing changed, on
// failure.
bool deliver(const char* destination, std::span<const Piece> pieces);

}  // namespace exifkeep

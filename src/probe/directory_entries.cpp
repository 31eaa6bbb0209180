// SPDX-License-Identifier: MIT
#include "probe/directory_entries.h"

#include <algorithm>

namespace exifkeep {

DirectoryEntries::DirectoryEntries(ExifFile& file, uint64_t position)
    : file_(file), position_(position + countSize) {
  uint16_t count;
  if (file_.read(position, count)) count_ = static_cast<int16_t>(count);
}

// Bytes beyond the end of the file are set to 0.
void DirectoryEntries::readRun() {
  const int32_t entries = std::min(count_ - taken_, runLength);
  const size_t length = static_cast<size_t>(entries) * IfdEntry::size;
  const uint64_t at = position_ + static_cast<uint64_t>(taken_) * IfdEntry::size;
  const size_t held = file_.readAt(at, bytes_, length);
  std::fill(bytes_ + held, bytes_ + length, uint8_t{0});
  taken_ += entries;
  next_ = 0;
  end_ = held;
}

}  // namespace exifkeep

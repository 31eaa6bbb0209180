// SPDX-License-Identifier: MIT
#include "probe/directory_entries.h"

#include <algorithm>

namespace exifkeep {

// The first read gets the count and the first run, which for most directories is everything.
DirectoryEntries::DirectoryEntries(ExifFile& file, uint64_t position)
    : file_(file), position_(position + countSize) {
  const size_t held = read(position, bytes_, sizeof bytes_);
  if (held < countSize) return;
  count_ = static_cast<int16_t>(file_.toShort(bytes_));
  beginRun(held - countSize);
}

// Bytes beyond the end of the file are set to 0.
size_t DirectoryEntries::read(uint64_t position, uint8_t* target, size_t length) {
  const size_t held = file_.readAt(position, target, length);
  std::fill(target + held, target + length, uint8_t{0});
  return held;
}

void DirectoryEntries::beginRun(size_t held) {
  const int32_t entries = std::clamp(count_ - taken_, 0, runLength);
  taken_ += entries;
  next_ = countSize;
  end_ = countSize + std::min(held, static_cast<size_t>(entries) * IfdEntry::size);
}

void DirectoryEntries::readRun() {
  const uint64_t at = position_ + static_cast<uint64_t>(taken_) * IfdEntry::size;
  beginRun(read(at, bytes_ + countSize, runLength * IfdEntry::size));
}

}  // namespace exifkeep

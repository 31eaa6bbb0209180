#include "probe/directory_entries.h"

#include <algorithm>
#include <cstring>

namespace exifkeep {

// One read takes the count and the first run, which is all of most directories.
DirectoryEntries::DirectoryEntries(ExifFile& file, uint64_t position)
    : file_(file), position_(position + countSize) {
  const size_t held = readRun(position, bytes_, sizeof bytes_);
  if (held < countSize) return;
  count_ = static_cast<int16_t>(file_.toShort(bytes_));
  runBytes_ = held - countSize;
}

// What the file does not hold of the run is zero.
size_t DirectoryEntries::readRun(uint64_t position, uint8_t* target, size_t length) {
  const size_t held = file_.readAt(position, target, length);
  std::fill(target + held, target + length, uint8_t{0});
  return held;
}

bool DirectoryEntries::next(IfdEntry& entry) {
  if (index_ >= count_) return false;
  const uint32_t inRun = static_cast<uint32_t>(index_) % runLength * IfdEntry::size;
  if (inRun == 0 && index_ > 0) {
    const uint64_t at = position_ + static_cast<uint64_t>(index_) * IfdEntry::size;
    runBytes_ = readRun(at, bytes_ + countSize, runLength * IfdEntry::size);
  }
  const size_t available = runBytes_ > inRun ? runBytes_ - inRun : 0;
  if (available < sizeof entry.tag) return false;
  ++index_;

  const uint8_t* bytes = bytes_ + countSize + inRun;
  entry.length = static_cast<uint32_t>(std::min<size_t>(available, IfdEntry::size));
  entry.tag = file_.toShort(bytes);
  entry.type = file_.toShort(bytes + 2);
  entry.count = file_.toLong(bytes + 4);
  std::memcpy(entry.value, bytes + IfdEntry::valuePosition, sizeof entry.value);
  return true;
}

}  // namespace exifkeep

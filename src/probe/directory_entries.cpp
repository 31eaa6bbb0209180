#include "probe/directory_entries.h"

#include <algorithm>
#include <cstring>

namespace exifkeep {

DirectoryEntries::DirectoryEntries(ExifFile& file, uint64_t position)
    : file_(file), position_(position + sizeof(uint16_t)) {
  uint16_t count;
  if (file_.read(position, count)) count_ = static_cast<int16_t>(count);
}

bool DirectoryEntries::next(IfdEntry& entry) {
  if (index_ >= count_) return false;
  const uint32_t inRun = static_cast<uint32_t>(index_) % runLength * IfdEntry::size;
  if (inRun == 0) {
    const uint32_t entries = std::min<uint32_t>(runLength, static_cast<uint32_t>(count_ - index_));
    const uint64_t at = position_ + static_cast<uint64_t>(index_) * IfdEntry::size;
    runBytes_ = file_.readAt(at, run_, size_t{entries} * IfdEntry::size);
  }
  const size_t available = runBytes_ > inRun ? runBytes_ - inRun : 0;
  if (available < sizeof entry.tag) return false;
  ++index_;

  uint8_t bytes[IfdEntry::size] = {};
  entry.length = static_cast<uint32_t>(std::min<size_t>(available, IfdEntry::size));
  std::memcpy(bytes, run_ + inRun, entry.length);
  entry.tag = file_.toShort(bytes);
  entry.type = file_.toShort(bytes + 2);
  entry.count = file_.toLong(bytes + 4);
  std::memcpy(entry.value, bytes + IfdEntry::valuePosition, sizeof entry.value);
  return true;
}

}  // namespace exifkeep

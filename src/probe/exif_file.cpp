// SPDX-License-Identifier: MIT
#include "probe/exif_file.h"

#include <algorithm>

namespace exifkeep {

std::optional<bool> ExifFile::byteOrderAt(uint64_t at) {
  const std::span<const uint8_t> mark = bytesAt(at, 2);
  if (mark.size() < 2 || mark[0] != mark[1]) return {};
  if (mark[0] == 'I') return true;
  if (mark[0] == 'M') return false;
  return {};
}

void ExifFile::setLayout(uint32_t tiffBase, bool littleEndian) {
  tiffBase_ = tiffBase;
  littleEndian_ = littleEndian;
}

std::span<const uint8_t> ExifFile::moveWindow(uint64_t at, size_t length) {
  const std::span<const uint8_t> none(window_->bytes, 0);
  if (at >= end_) return none;
  if (memory_.data())
    return memory_.subspan(static_cast<size_t>(at)).first(std::min<uint64_t>(length, end_ - at));
  window_ = &windows_[window_ == &windows_[0] ? 1 : 0];
  if (!window_->holds(at, length)) {
    const auto skipped = static_cast<size_t>(at % pageSize);
    const size_t wanted = std::max(window_->fillSize, skipped + length);
    window_->start = at - skipped;
    window_->length = file_.readAt(window_->start, window_->bytes, wanted);
    if (window_->length < wanted) end_ = window_->start + window_->length;
    window_->fillSize = sizeof window_->bytes;
  }
  const uint64_t from = at - window_->start;
  if (from >= window_->length) return none;
  return {window_->bytes + from, std::min<size_t>(length, window_->length - from)};
}

bool ExifFile::read(uint64_t at, uint16_t& value) {
  uint8_t bytes[2];
  if (readAt(at, bytes, sizeof bytes) != sizeof bytes) return false;
  value = toShort(bytes);
  return true;
}

bool ExifFile::read(uint64_t at, uint32_t& value) {
  uint8_t bytes[4];
  if (readAt(at, bytes, sizeof bytes) != sizeof bytes) return false;
  value = toLong(bytes);
  return true;
}

}  // namespace exifkeep

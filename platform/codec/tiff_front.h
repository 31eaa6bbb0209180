// SPDX-License-Identifier: MIT
// The part of a new TIFF file before its pixels, in memory while the TIFF library writes it. The
// library completes the directory only after it has written the pixels, so they are written to this
// file too, but not kept.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace exifkeep {

class TiffFront {
 public:
  const std::vector<uint8_t>& bytes() const { return bytes_; }
  // From now on, bytes written after the front are counted but not stored.
  void endFront() { hasEnded_ = true; }

  // The file as seen by the library.
  uint64_t size() const { return bytes_.size() + pixels_; }
  uint64_t position() const { return position_; }
  void moveTo(uint64_t position) { position_ = position; }
  size_t read(void* bytes, size_t count);
  bool write(const void* bytes, size_t count);

 private:
  std::vector<uint8_t> bytes_;
  uint64_t pixels_ = 0;
  uint64_t position_ = 0;
  bool hasEnded_ = false;
};

}  // namespace exifkeep

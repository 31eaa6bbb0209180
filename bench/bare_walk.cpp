// SPDX-License-Identifier: MIT
#include "bare_walk.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace bench {

namespace {

constexpr uint32_t entrySize = 12;

// A file read through a window that begins at a page boundary.
class Window {
 public:
  explicit Window(const char* path) : file_(open(path, O_RDONLY | O_CLOEXEC)) {}
  ~Window() {
    if (file_ >= 0) close(file_);
  }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  size_t copy(uint64_t at, void* target, size_t length) {
    size_t done = 0;
    while (done < length) {
      if (at + done - start_ >= length_ && !moveTo(at + done)) break;
      const size_t from = at + done - start_;
      const size_t step = std::min(length - done, length_ - from);
      std::memcpy(static_cast<char*>(target) + done, bytes_ + from, step);
      done += step;
    }
    return done;
  }

 private:
  bool moveTo(uint64_t at) {
    start_ = at / sizeof bytes_ * sizeof bytes_;
    length_ = static_cast<size_t>(
        std::max<ssize_t>(pread(file_, bytes_, sizeof bytes_, static_cast<off_t>(start_)), 0));
    return at - start_ < length_;
  }

  int file_;
  uint64_t start_ = 0;
  size_t length_ = 0;
  char bytes_[4096];
};

class Walk {
 public:
  explicit Walk(const char* path) : window_(path) {}
  unsigned run();

 private:
  bool findHeader();
  // Returns what the entry `wanted` of the directory points to, or 0 if there is none.
  uint32_t walk(uint32_t offset, uint16_t wanted);
  void copyValue(const uint8_t* entry);

  uint16_t toShort(const uint8_t* bytes) const {
    uint16_t value;
    std::memcpy(&value, bytes, sizeof value);
    return isBigEndian_ ? __builtin_bswap16(value) : value;
  }
  uint32_t toLong(const uint8_t* bytes) const {
    uint32_t value;
    std::memcpy(&value, bytes, sizeof value);
    return isBigEndian_ ? __builtin_bswap32(value) : value;
  }

  Window window_;
  uint64_t base_ = 0;
  bool isBigEndian_ = false;
  unsigned copied_ = 0;
};

// SOI, APP1 or SOI, APP0, APP1; otherwise a TIFF file.
bool Walk::findHeader() {
  uint8_t head[64];
  if (window_.copy(0, head, sizeof head) != sizeof head) return false;
  if (head[0] == 0xFF) base_ = head[3] == 0xE0 ? 4u + (head[4] << 8 | head[5]) + 10 : 12;
  uint8_t mark;
  window_.copy(base_, &mark, sizeof mark);
  isBigEndian_ = mark == 'M';
  return true;
}

// As much of a value as a list shows at most.
void Walk::copyValue(const uint8_t* entry) {
  static constexpr uint8_t unitSizes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};
  const uint16_t type = toShort(entry + 2);
  const uint64_t size =
      uint64_t{type < sizeof unitSizes ? unitSizes[type] : 0u} * toLong(entry + 4);
  if (size <= 4) return;
  uint8_t value[263];
  copied_ += static_cast<unsigned>(
      window_.copy(base_ + toLong(entry + 8), value, std::min<uint64_t>(size, sizeof value)));
  asm volatile("" : : "r"(value) : "memory");  // not optimised away
}

uint32_t Walk::walk(uint32_t offset, uint16_t wanted) {
  const uint64_t at = base_ + offset;
  uint8_t count[2], entry[entrySize];
  if (window_.copy(at, count, sizeof count) != sizeof count) return 0;
  const uint64_t end = at + sizeof count + entrySize * toShort(count);
  uint32_t found = 0;
  for (uint64_t next = at + sizeof count; next < end; next += entrySize) {
    if (window_.copy(next, entry, entrySize) != entrySize) break;
    if (toShort(entry) == wanted) found = toLong(entry + 8);
    copyValue(entry);
    copied_ += entrySize;
  }
  return found;
}

unsigned Walk::run() {
  uint8_t offset[4];
  if (!findHeader() || window_.copy(base_ + 4, offset, sizeof offset) != sizeof offset) return 0;
  const uint32_t exif = walk(toLong(offset), 0x8769);
  if (!exif) return 0;
  if (const uint32_t interoperability = walk(exif, 0xA005)) walk(interoperability, 0);
  return copied_;
}

}  // namespace

unsigned bareWalk(const char* path) {
  return Walk(path).run();
}

}  // namespace bench

// SPDX-License-Identifier: MIT
// A movable, zero-filled block of global memory with a single owner, and its lock.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace exifkeep {

class GlobalBlock {
 public:
  GlobalBlock() = default;
  // Empty if memory runs out.
  explicit GlobalBlock(size_t size) : handle_(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size)) {}
  GlobalBlock(GlobalBlock&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  GlobalBlock& operator=(GlobalBlock&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~GlobalBlock() {
    if (handle_) GlobalFree(handle_);
  }

  explicit operator bool() const { return handle_ != nullptr; }
  HGLOBAL handle() const { return handle_; }

 private:
  HGLOBAL handle_ = nullptr;
};

// Locks a block. REQUIRES: the block outlives this object.
class BlockLock {
 public:
  explicit BlockLock(const GlobalBlock& block)
      : handle_(block.handle()),
        bytes_(handle_ ? static_cast<uint8_t*>(GlobalLock(handle_)) : nullptr) {}
  ~BlockLock() { unlock(); }
  BlockLock(const BlockLock&) = delete;
  BlockLock& operator=(const BlockLock&) = delete;

  // Null if the block is empty or cannot be locked.
  uint8_t* bytes() const { return bytes_; }
  // Unlocks early; bytes() is null from then on.
  void unlock() {
    if (std::exchange(bytes_, nullptr)) GlobalUnlock(handle_);
  }

 private:
  HGLOBAL handle_;
  uint8_t* bytes_;
};

}  // namespace exifkeep

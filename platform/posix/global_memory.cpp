// SPDX-License-Identifier: MIT
// A handle is the address of the header before the bytes, so that it cannot be mistaken for the
// address of the bytes. Zeroed blocks come from calloc, which does not touch large ones.
#include <windows.h>

#include <cstdlib>

#include "failure_switch.h"

namespace {

struct alignas(std::max_align_t) BlockHeader {
  SIZE_T size;
  UINT locks;
};

BlockHeader* headerOf(HGLOBAL block) {
  return static_cast<BlockHeader*>(block);
}

}  // namespace

HGLOBAL GlobalAlloc(UINT flags, SIZE_T size) {
  if (exifkeep::failsNow(exifkeep::PlatformCall::allocate)) return nullptr;
  if ((flags & GMEM_MOVEABLE) == 0 || size > PTRDIFF_MAX - sizeof(BlockHeader)) return nullptr;
  const SIZE_T whole = size + sizeof(BlockHeader);
  const bool clear = (flags & GMEM_ZEROINIT) != 0;
  BlockHeader* header = headerOf(clear ? std::calloc(1, whole) : std::malloc(whole));
  if (!header) return nullptr;
  *header = {size, 0};
  exifkeep::countBlock(1);
  return header;
}

LPVOID GlobalLock(HGLOBAL block) {
  if (exifkeep::failsNow(exifkeep::PlatformCall::lock)) return nullptr;
  BlockHeader* header = headerOf(block);
  if (!header || header->size == 0) return nullptr;
  ++header->locks;
  return header + 1;
}

// Returns whether other locks remain.
BOOL GlobalUnlock(HGLOBAL block) {
  BlockHeader* header = headerOf(block);
  if (!header || header->locks == 0) return FALSE;
  return --header->locks > 0;
}

HGLOBAL GlobalFree(HGLOBAL block) {
  if (block) exifkeep::countBlock(-1);
  std::free(block);
  return nullptr;
}

// SPDX-License-Identifier: MIT
// Palettes are the only GDI objects here.
#include <windows.h>

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

#include "failure_switch.h"

struct HPALETTE__ {
  std::vector<PALETTEENTRY> entries;
};

HPALETTE CreatePalette(const LOGPALETTE* palette) {
  if (exifkeep::failsNow(exifkeep::PlatformCall::palette)) return nullptr;
  if (!palette || palette->palNumEntries == 0) return nullptr;
  try {
    // The array has palNumEntries elements.
    const PALETTEENTRY* first = palette->palPalEntry;
    auto created = std::make_unique<HPALETTE__>();
    created->entries.assign(first, first + palette->palNumEntries);
    exifkeep::countPalette(1);
    return created.release();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

// Returns the number of entries copied, or the size of the palette if `entries` is null.
UINT GetPaletteEntries(HPALETTE palette, UINT start, UINT count, LPPALETTEENTRY entries) {
  if (!palette) return 0;
  const UINT size = static_cast<UINT>(palette->entries.size());
  if (!entries) return size;
  if (start >= size) return 0;
  count = std::min(count, size - start);
  std::copy_n(palette->entries.begin() + start, count, entries);
  return count;
}

BOOL DeleteObject(HGDIOBJ object) {
  if (!object) return FALSE;
  exifkeep::countPalette(-1);
  delete static_cast<HPALETTE>(object);
  return TRUE;
}

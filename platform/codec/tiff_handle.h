// SPDX-License-Identifier: MIT
// A TIFF library handle for a file that is read or the front of one that is written. Its errors and
// warnings are ignored, without changing the process-wide handlers, and no single allocation of the
// library exceeds 1 GiB.
#pragma once

#include <tiffio.h>

#include <memory>

#include "tiff_front.h"
#include "tiff_source.h"

namespace exifkeep {

struct TiffClose {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using TiffHandle = std::unique_ptr<TIFF, TiffClose>;

// Null if this is not a readable TIFF file. REQUIRES: the source outlives the handle.
TiffHandle openTiff(TiffSource& source);
// Creates a little-endian TIFF file. REQUIRES: `front` is empty and outlives the handle.
TiffHandle createTiff(TiffFront& front);

}  // namespace exifkeep

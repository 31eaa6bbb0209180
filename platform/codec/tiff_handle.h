// A TIFF library handle over a picture file. Its errors and warnings are swallowed (each handle has
// its own handlers, so nothing reaches the process-wide ones), and no single allocation of the
// library exceeds 1 GiB.
#pragma once

#include <tiffio.h>

#include <memory>

#include "picture_file.h"
#include "tiff_source.h"

namespace exifkeep {

struct TiffClose {
  void operator()(TIFF* tiff) const noexcept { TIFFClose(tiff); }
};
using TiffHandle = std::unique_ptr<TIFF, TiffClose>;

// The source must outlive the handle. Null when this is no readable TIFF file.
TiffHandle openTiff(TiffSource& source) noexcept;
// A new little-endian file, which must outlive the handle.
TiffHandle createTiff(PictureWriting& file) noexcept;

}  // namespace exifkeep

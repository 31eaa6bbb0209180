// The front part of a saved Exif TIFF file: the TIFF header, all directories and the thumbnail,
// assembled in one block. Block offsets are file offsets; the picture's strip follows the block.
#pragma once

#include <praster.h>

#include <cstdint>

#include "probe/exif_reader.h"
#include "read/records.h"
#include "system/global_block.h"

namespace exifkeep {

struct FrontPart {
  GlobalBlock block;
  uint32_t size = 0;

  explicit operator bool() const { return static_cast<bool>(block); }
};

// Both put the picture's size into `primary`, whose flags stay as they are, and take the host's
// thumbnail when it is given and not empty, else make one.

// From the records of the picture's source: with the interoperability and GPS directories where the
// source had them, and with IFD1 unless the reader saw that the source had none. None when the
// front part cannot be built.
FrontPart buildTiffBlockFromRecords(const ExifReader& reader, const PRaster& picture,
                                    PRaster* hostThumbnail, ExifMetadata& metadata);

// With default fields, what is set in `exif`, and the codec's fields and Software in `primary`. The
// reader's byte order becomes that of the codec's thumbnail file.
FrontPart buildNewTiffBlock(ExifReader& reader, const PRaster& picture, PRaster* hostThumbnail,
                            const ExifIfdRecord& exif, ImageIfdRecord& primary);

}  // namespace exifkeep

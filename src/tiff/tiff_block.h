// SPDX-License-Identifier: MIT
// Builds the front part of a saved Exif TIFF file in a block: the TIFF header, all directories and
// the thumbnail. Block offsets are file offsets; the picture's strip follows the block.
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

// Both set the picture's size in `primary`, but not its flags, and embed the host's thumbnail if it
// is given and not empty, or else make one. On failure they return no block.

// From the records of the picture's source: with the interoperability and GPS directories where the
// source had them, and with IFD1 unless the reader found that the source had none.
FrontPart buildTiffBlockFromRecords(ExifReader& reader, const PRaster& picture,
                                    PRaster* hostThumbnail, ExifMetadata& metadata);

// With default fields, the fields set in `exif`, and the codec's fields and Software from
// `primary`. Sets the reader's byte order to that of the codec's thumbnail file.
FrontPart buildNewTiffBlock(ExifReader& reader, const PRaster& picture, PRaster* hostThumbnail,
                            const ExifIfdRecord& exif, ImageIfdRecord& primary);

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// Builds the Exif APP1 segment of a saved JPEG picture (Exif 2.2, 4.7.2) in a block, from the
// records of the picture's source or with default fields for a picture that has none.
#pragma once

#include <praster.h>

#include <cstdint>

#include "imageio/image_codec_bridge.h"
#include "read/records.h"
#include "system/global_block.h"
#include "write/directory_writer.h"

namespace exifkeep {

// Both embed the host's thumbnail if it is given and not empty, or else make one. On failure they
// return no block.

// The segment with IFD0, the Exif directory, the interoperability and GPS directories where the
// source had them, and IFD1.
GlobalBlock buildSegmentFromRecords(const ImageCodecBridge& codec, const PRaster& picture,
                                    PRaster* hostThumbnail, const ExifMetadata& metadata);

// The segment with default fields, the fields set in `exif`, and Software from `primary`.
GlobalBlock buildSegmentWithDefaults(const ImageCodecBridge& codec, const PRaster& picture,
                                     PRaster* hostThumbnail, const ExifIfdRecord& exif,
                                     const ImageIfdRecord& primary);

// The size of a finished segment, including the marker.
uint32_t segmentSize(const uint8_t* segment);

}  // namespace exifkeep

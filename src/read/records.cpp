// SPDX-License-Identifier: MIT
#include "read/records.h"

#include <algorithm>
#include <cstring>

#include "probe/exif_reader.h"

namespace exifkeep {

void resetImageIfdRecord(const ExifReader& reader, ImageIfdRecord& record) {
  record = {};
  std::ranges::fill(record.bitsPerSample, uint16_t{8});
  // 1/72, not the standard's 72/1. Intended: hosts recognise by it a resolution that is not given.
  record.xResolution = record.yResolution = {1, 72};
  record.resolutionUnit = 2;
  const uint32_t chroma = reader.isJpeg ? 128 : 255;
  record.referenceBlackWhite[0].numerator = 255;
  record.referenceBlackWhite[1].numerator = chroma;
  record.referenceBlackWhite[2].numerator = chroma;
  record.yCbCrPositioning = 1;
  record.orientation = 1;
}

void resetExifIfdRecord(ExifReader& reader, ExifIfdRecord& record) {
  reader.makerNoteBuffer.reset();
  reader.userCommentBuffer.reset();
  record = {};
  record.focalPlaneResolutionUnit = 2;
  record.sceneType = 1;
}

void resetGpsIfdRecord(GpsIfdRecord& record) {
  record = {};
  // The characters "22", not the version bytes 2, 2. Intended: users treat the field as text.
  std::memcpy(record.gpsVersionId, "22", 2);
  record.gpsSpeedRef[0] = record.gpsDestDistanceRef[0] = 'K';
  record.gpsTrackRef[0] = record.gpsImgDirectionRef[0] = record.gpsDestBearingRef[0] = 'T';
}

}  // namespace exifkeep

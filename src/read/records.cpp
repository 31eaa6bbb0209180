#include "read/records.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>

#include "probe/exif_reader.h"
#include "read/tag_tables.h"

namespace exifkeep {

namespace {

uint32_t countFlags(TagTable table, const void* record, std::initializer_list<uint16_t> uncounted) {
  uint32_t count = 0;
  for (const TagRow& row : table) {
    if (row.flag == noField || std::ranges::find(uncounted, row.tag) != uncounted.end()) continue;
    uint32_t flag;
    std::memcpy(&flag, static_cast<const char*>(record) + row.flag, sizeof flag);
    count += flag == 1;
  }
  return count;
}

}  // namespace

void resetImageIfdRecord(const ExifReader& reader, ImageIfdRecord& record) {
  record = {};
  std::ranges::fill(record.bitsPerSample, uint16_t{8});
  // 1/72, not the 72/1 of the standard: intended, hosts know it for a resolution that is not given.
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
  // The characters "2" "2", not the version bytes 2, 2: intended, the field is text to its users.
  std::memcpy(record.gpsVersionId, "22", 2);
  record.gpsSpeedRef[0] = record.gpsDestDistanceRef[0] = 'K';
  record.gpsTrackRef[0] = record.gpsImgDirectionRef[0] = record.gpsDestBearingRef[0] = 'T';
}

uint32_t countPresentImageFields(const ImageIfdRecord& record) {
  return countFlags(imageTags, &record,
                    {tag::stripByteCounts, tag::rowsPerStrip, tag::stripOffsets, tag::artist});
}

uint32_t countPresentGpsFields(const GpsIfdRecord& record) {
  return countFlags(gpsTags, &record, {tag::gpsDestLatitudeRef, tag::gpsDestLongitude});
}

uint32_t countPresentExifFields(const ExifIfdRecord& record) {
  return countFlags(exifTags, &record, {tag::componentsConfiguration});
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
#include "write/processing.h"

#include <cstring>
#include <utility>

namespace exifkeep {

namespace {

enum ProcessCode { turned = 2, resized = 3, firstFiltered = 4, lastFiltered = 6 };

// Processed pixels are stored upright.
void describeResult(ImageIfdRecord& primary) {
  constexpr char software[] = "Vexapict";
  if (primary.hasOrientation) primary.orientation = 1;
  if (primary.hasYCbCrPositioning) primary.yCbCrPositioning = 1;
  std::memset(primary.software, 0, sizeof primary.software);
  std::memcpy(primary.software, software, sizeof software);
  primary.hasSoftware = 1;
}

// Only the low 16 bits. Intended: to hosts these fields have always been SHORTs.
void updateDimensions(const PRaster& picture, ExifIfdRecord& exif) {
  if (exif.hasPixelXDimension)
    exif.pixelXDimension = static_cast<uint16_t>(picture.GetImageWidth());
  if (exif.hasPixelYDimension)
    exif.pixelYDimension = static_cast<uint16_t>(picture.GetImageHeight());
}

void turnSubject(ExifIfdRecord& exif) {
  if (exif.hasSubjectLocation) std::swap(exif.subjectLocation[0], exif.subjectLocation[1]);
  if (!exif.hasSubjectArea) return;
  std::swap(exif.subjectArea[0], exif.subjectArea[1]);
  // Only a rectangle has a height; a circle's diameter does not change.
  if (exif.subjectArea[3] != 0) std::swap(exif.subjectArea[2], exif.subjectArea[3]);
}

}  // namespace

void applyProcessing(int processCode, const PRaster& picture, ExifMetadata& metadata) {
  if (processCode < turned || processCode > lastFiltered) return;
  ExifIfdRecord& exif = metadata.exif;
  describeResult(metadata.primary);
  if (processCode <= resized) updateDimensions(picture, exif);
  if (processCode == turned) turnSubject(exif);
  if (processCode >= firstFiltered && exif.hasCustomRendered && exif.customRendered == 0)
    exif.customRendered = 1;
}

}  // namespace exifkeep

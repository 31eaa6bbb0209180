// What every writer takes from the picture and the clock.
#pragma once

#include <praster.h>

#include "write/directory_writer.h"

namespace exifkeep {

// Dots per inch of a resolution in dots per metre, rounded to nearest.
Rational resolutionDefault(uint32_t dotsPerMetre);

// The local time now, the picture's resolution and its size.
RowContext contextOf(const PRaster& picture);

// The records to try, in turn, until the directories fit their block: as they are, without the
// maker note, without the user comment too.
class ShrinkingRecord {
 public:
  explicit ShrinkingRecord(const ExifIfdRecord& exif) : exif_(exif) {}
  const ExifIfdRecord& record() const { return exif_; }
  // Leaves one more of the two out; false when neither is left.
  bool shrink();

 private:
  ExifIfdRecord exif_;
};

}  // namespace exifkeep

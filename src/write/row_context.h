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
// maker note (the user comment, when the note is small), without both.
class ShrinkingRecord {
 public:
  explicit ShrinkingRecord(const ExifIfdRecord& exif) : exif_(exif) {}
  const ExifIfdRecord& record() const { return exif_; }
  // Leaves one more of the two out; false when neither is left.
  bool shrink();

 private:
  // A small note stays while there is a comment to leave out. A large one goes first: beside it,
  // there would often be no room for the thumbnail.
  static constexpr uint32_t smallNote = 4096;

  ExifIfdRecord exif_;
};

}  // namespace exifkeep

// Scaling one image into another of the same depth and any size. Every pixel of the target is set.
#pragma once

#include "raster_image.h"

namespace exifkeep {

// Area average along an axis that shrinks, linear interpolation along one that grows. 8 or 24 bits.
// False, with the target untouched, when there is no memory for the row sums.
bool scaleBlended(const PRaster::Image& source, PRaster::Image& target) noexcept;

// The nearest source pixel, for levels that cannot be averaged. 1 or 8 bits.
void scaleNearest(const PRaster::Image& source, PRaster::Image& target) noexcept;

}  // namespace exifkeep

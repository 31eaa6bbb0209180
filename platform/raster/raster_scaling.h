// SPDX-License-Identifier: MIT
// Scales one image into another of the same depth and any size. Sets every pixel of the target.
#pragma once

#include "raster_image.h"

namespace exifkeep {

// Averages along an axis that shrinks and interpolates linearly along one that grows. 8 or 24 bits.
// False, with the target unchanged, if memory runs out.
bool scaleBlended(const PRaster::Image& source, PRaster::Image& target);

// Takes the nearest source pixel, for levels that cannot be averaged. 1 or 8 bits.
void scaleNearest(const PRaster::Image& source, PRaster::Image& target);

}  // namespace exifkeep

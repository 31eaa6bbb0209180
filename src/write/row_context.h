// SPDX-License-Identifier: MIT
// What a written directory takes from the picture and the clock instead of a record.
#pragma once

#include <praster.h>

#include <array>
#include <cstdint>

#include "write/output_rows.h"

namespace exifkeep {

struct RowContext {
  char now[20] = {};  // YYYY:MM:DD HH:MM:SS
  Rational xResolution = {0, 1};
  Rational yResolution = {0, 1};
  std::array<uint32_t, static_cast<size_t>(Supplied::count)> supplied = {};

  uint32_t& operator[](Supplied what) { return supplied[static_cast<size_t>(what)]; }
};

// Dots per inch of a resolution in dots per metre, rounded to nearest.
Rational resolutionDefault(uint32_t dotsPerMetre);

// The current local time and the picture's resolution and size.
RowContext contextOf(const PRaster& picture);

}  // namespace exifkeep

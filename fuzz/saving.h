// SPDX-License-Identifier: MIT
// Saves a small picture with the input as the source of its metadata, to a new file or over the
// source, as chosen.
#pragma once

#include "input.h"

namespace exifkeep::fuzz {

// REQUIRES: `extension` without '.'.
void saveFromInput(const PictureInput& input, const char* extension);

}  // namespace exifkeep::fuzz

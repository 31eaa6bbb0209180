// SPDX-License-Identifier: MIT
// Saving as TIFF.
#include "saving.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  exifkeep::fuzz::saveFromInput({data, size}, "tif");
  return 0;
}

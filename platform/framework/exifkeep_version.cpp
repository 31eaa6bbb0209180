// SPDX-License-Identifier: MIT
#include <exifkeep_version.h>

int exifkeep::runningVersion() noexcept {
  return EXIFKEEP_VERSION_NUMBER;
}

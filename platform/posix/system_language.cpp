// SPDX-License-Identifier: MIT
// POSIX has no setting other than the environment.
#include "system_language.h"

namespace exifkeep {

LANGID threadLanguage() {
  return GetThreadUILanguage();
}

std::string systemLanguage() {
  return {};
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
#include "system/random_name.h"

#include <cstdio>
#include <random>

namespace exifkeep {

std::string randomName(std::string_view head) {
  std::random_device device;
  const unsigned high = device(), low = device();
  char digits[17];
  std::snprintf(digits, sizeof digits, "%08x%08x", high, low);
  return std::string(head) + digits;
}

}  // namespace exifkeep

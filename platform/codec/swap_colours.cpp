// SPDX-License-Identifier: MIT
// Converts between the raster's blue, green, red and the red, green, blue of TIFF files. For 12
// megapixels this takes 60 % of the time needed to write the file if done byte by byte, and 10 %
// with five pixels at a time.
#include <cstring>

#include "picture_format.h"

namespace exifkeep {
namespace {

void swapPixels(const BYTE* from, BYTE* to, size_t pixels) {
  for (size_t i = 0; i < pixels; ++i, from += 3, to += 3) {
    to[0] = from[2];
    to[1] = from[1];
    to[2] = from[0];
  }
}

#if defined(__x86_64__) || defined(__i386__)
#define EXIFKEEP_BYTE_SHUFFLE __attribute__((target("ssse3")))
bool hasByteShuffle() {
  return __builtin_cpu_supports("ssse3");
}
#else
#define EXIFKEEP_BYTE_SHUFFLE
constexpr bool hasByteShuffle() {
  return true;
}
#endif

// Converts five pixels at a time in 16 bytes; the next step overwrites the 16th byte. Returns how
// many pixels it has converted: all but the last few.
EXIFKEEP_BYTE_SHUFFLE size_t swapFives(const BYTE* from, BYTE* to, size_t pixels) {
  using Bytes16 = unsigned char __attribute__((vector_size(16)));
  size_t done = 0;
  for (; done + 6 <= pixels; done += 5) {
    Bytes16 bytes;
    std::memcpy(&bytes, from + 3 * done, 16);
    bytes =
        __builtin_shufflevector(bytes, bytes, 2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15);
    std::memcpy(to + 3 * done, &bytes, 16);
  }
  return done;
}

}  // namespace

void swapRedAndBlue(const BYTE* from, BYTE* to, size_t pixels) {
  const size_t done = hasByteShuffle() ? swapFives(from, to, pixels) : 0;
  swapPixels(from + 3 * done, to + 3 * done, pixels - done);
}

}  // namespace exifkeep

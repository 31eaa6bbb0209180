// SPDX-License-Identifier: MIT
#include "read/exif_version.h"

#include "read/directory_walk.h"

namespace exifkeep {

namespace {

float exifVersionNumber(const char* digits) {
  const auto digit = [&](int i) { return static_cast<double>(digits[i] - '0'); };
  // Single-precision constants and one rounding at the end. Intended: hosts compare the result with
  // 2.2f. All products and sums here are exact in double precision.
  const double number =
      digit(3) * double{0.01f} + digit(2) * double{0.1f} + digit(0) * 10.0 + digit(1);
  return static_cast<float>(number);
}

}  // namespace

// If the tag is repeated, the last entry counts, as in the info list.
float readExifVersion(ExifReader& reader, const char* path) {
  if (!hasExifExtension(path)) return 0.0f;
  ExifFile file(path);
  if (!reader.probeFile(file)) return 0.0f;
  ExifIfdRecord exif = {};
  DirectoryWalk walk(file, static_cast<uint32_t>(reader.exifIfdOffset));
  while (walk.next())
    if (walk.tag() == tag::exifVersion) walk.decodeEntry(exifIndex, &exif);
  if (file.error() != ERROR_SUCCESS || !exif.hasExifVersion) return 0.0f;
  return exifVersionNumber(exif.exifVersion);
}

}  // namespace exifkeep

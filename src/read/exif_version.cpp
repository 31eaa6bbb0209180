// SPDX-License-Identifier: MIT
#include "read/exif_version.h"

#include "read/read_metadata.h"

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

float readExifVersion(ExifReader& reader, const char* path) {
  ExifIfdRecord exif;
  reader.maxValueLength = 0;
  if (!readExifDirectory(reader, path, exif) || !exif.hasExifVersion) return 0.0f;
  return exifVersionNumber(exif.exifVersion);
}

}  // namespace exifkeep

// The Exif version as a number, for every version of four digits and through the export.
#include "read/exif_version.h"

#include <exifkeep/exifkeep.h>

#include <bit>

#include "read/reading.h"

namespace exifkeep::test {
namespace {

using VersionTest = ReadTest;

TEST_F(VersionTest, RoundsOnceForEveryVersion) {
  for (int n = 0; n < 10000; ++n) {
    const std::string digits = std::to_string(10000 + n).substr(1);
    using Wide = long double;
    const Wide exact =
        n % 10 * Wide{0.01f} + n / 10 % 10 * Wide{0.1f} + n / 1000 * 10 + n / 100 % 10;
    EXPECT_EQ(exifVersionNumber(digits.c_str()), static_cast<float>(exact)) << digits;
  }
  EXPECT_EQ(std::bit_cast<uint32_t>(exifVersionNumber("0220")), 0x400CCCCDu);
}

TEST_F(VersionTest, ComesFromTheFile) {
  const auto versionOf = [&](const std::vector<Entry>& exif) {
    return GetExifVersion(
        fileOf(tiffBytes({.image = {exifPointer()}, .exif = exif}, Order::mm)).c_str());
  };
  EXPECT_EQ(versionOf({bytes(0x9000, "0221")}), 2.21f);
  EXPECT_EQ(versionOf({version(), bytes(0x9000, "0300")}), 3.0f);
  // What is no digit counts by its distance from '0'.
  EXPECT_EQ(versionOf({bytes(0x9000, "0A/0")}), static_cast<float>(17 - double{0.1f}));
  EXPECT_EQ(versionOf({shorts(0x9209, {1})}), 0.0f);
  EXPECT_EQ(GetExifVersion(fileOf(jpegStart + jpegEnd).c_str()), 0.0f);
  EXPECT_EQ(GetExifVersion(""), 0.0f);
}

}  // namespace
}  // namespace exifkeep::test

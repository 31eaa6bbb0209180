// The Exif version as a number, through the export and for every version of four digits.
#include "read/exif_version.h"

#include <exifkeep/exifkeep.h>

#include <bit>

#include "read/reading.h"

namespace exifkeep::test {
namespace {

using VersionTest = ReadTest;

TEST_F(VersionTest, RoundsOnceForEveryVersion) {
  for (int version = 0; version < 10000; ++version) {
    const std::string digits = std::to_string(10000 + version).substr(1);
    const int c0 = version / 1000, c1 = version / 100 % 10, c2 = version / 10 % 10,
              c3 = version % 10;
    using Wide = long double;
    const Wide exact = c3 * Wide{0.01f} + c2 * Wide{0.1f} + c0 * Wide{10.0f} + c1;
    EXPECT_EQ(exifVersionNumber(digits.c_str()), static_cast<float>(exact)) << digits;
  }
}

TEST_F(VersionTest, ComesFromTheFile) {
  const auto versionOf = [&](const std::vector<Entry>& exif) {
    const Picture picture{.image = {exifPointer()}, .exif = exif};
    return GetExifVersion(fileOf(tiffBytes(picture, Order::mm)).c_str());
  };
  EXPECT_EQ(std::bit_cast<uint32_t>(versionOf({version()})), 0x400CCCCDu);
  EXPECT_EQ(versionOf({bytes(0x9000, "0221")}), 2.21f);
  EXPECT_EQ(versionOf({bytes(0x9000, "1000")}), 10.0f);
  EXPECT_EQ(versionOf({bytes(0x9000, "0220"), bytes(0x9000, "0300")}), 3.0f);
  // Not digits: each counts by its distance from '0'.
  EXPECT_EQ(versionOf({bytes(0x9000, "0A/0")}), static_cast<float>(17 - double{0.1f}));
  EXPECT_EQ(versionOf({shorts(0x9209, {1})}), 0.0f);
  EXPECT_EQ(GetExifVersion(fileOf(jpegStart + jpegEnd).c_str()), 0.0f);
  EXPECT_EQ(GetExifVersion(""), 0.0f);
}

}  // namespace
}  // namespace exifkeep::test

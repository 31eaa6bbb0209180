// Which directories are read and from where: the GPS position and its oddities, IFD1, the
// interoperability directory and the version.
#include <exifkeep/exifkeep.h>

#include <cmath>

#include "read/reading.h"

namespace exifkeep::test {
namespace {

using DirectoriesTest = ReadTest;

const Entry speedRef = text(12, "M");

TEST_F(DirectoriesTest, GpsPositionComesFromTheLastPointersAndTheFirstExifDirectory) {
  using Entries = std::vector<Entry>;
  const Entry exif = exifPointer(), gps = gpsPointer(), lies = longs(0x8825, {3});
  // With an Exif pointer of 100 instead, the GPS pointer to the place just behind the directory.
  const int64_t madeUp = 100 + Picture::entriesSize({version()});
  const struct {
    const char* what;
    Entries image, thumbnail;
    bool isRead;
  } cases[] = {
      {"the last GPS pointer counts", {exif, lies, gps}, {}, true},
      {"and not the first", {exif, gps, lies}, {}, false},
      {"the last Exif pointer", {exif, longs(0x8769, {100}), longs(0x8825, {madeUp})}, {}, true},
      {"pointers of IFD1", {exif}, {exif, gps}, true},
      {"IFD0 has the last word", {exif, gps}, {exif, lies}, true},
      // A position of 0 or less from IFD1 keeps even a good one of IFD0 from being used.
      {"a negative position", {exif, gps}, {longs(0x8769, {INT32_MAX}), lies}, false},
  };
  for (const auto& [what, image, thumbnail, isRead] : cases)
    for (const Order order : bothOrders) {
      const Picture picture{
          .image = image, .exif = {version()}, .gps = {speedRef}, .thumbnail = thumbnail};
      const auto result = read(jpegBytes(tiffBytes(picture, order), jfifSegment()));
      EXPECT_EQ(result->gps.hasGpsSpeedRef, isRead) << what;
    }
}

TEST_F(DirectoriesTest, VersionIsANumberRoundedOnce) {
  const auto versionOf = [&](const std::string& characters) {
    const Picture picture{.image = {exifPointer()}, .exif = {bytes(0x9000, characters)}};
    return GetExifVersion(fileOf(tiffBytes(picture, Order::mm)).c_str());
  };
  EXPECT_EQ(versionOf("0221"), 2.21f);
  EXPECT_EQ(versionOf("1230"), 12.3f);
  // 1 + 3 * 0.1f + 0.01f, rounded at the end only, lies above the number next to 1.31.
  EXPECT_EQ(versionOf("0131"), std::nextafter(1.31f, 2.0f));
  // What is no digit counts by its distance from '0'.
  EXPECT_EQ(versionOf("0A/0"), static_cast<float>(17 - double{0.1f}));
  EXPECT_EQ(GetExifVersion(fileOf(jpegStart + jpegEnd).c_str()), 0.0f);
}

TEST_F(DirectoriesTest, InteroperabilityNeedsExactlyR98AndExif21) {
  const struct {
    const char* version;
    const char* index;
    bool isR98;
    const char* kept;
  } cases[] = {
      {"0210", "R98", true, "0100"},   {"0209", "R98", false, ""},
      {"abcd", "R98", false, ""},      {"210", "R98", true, "0100"},
      {"0220", "R98x", false, "0100"}, {"0200", "R03", false, "0100"},
  };
  for (const auto& [version, index, isR98, kept] : cases)
    for (const Order order : bothOrders) {
      // The version stands behind the pointer: the rule comes last.
      const auto result = read({.image = {exifPointer()},
                                .exif = {interoperabilityPointer(), bytes(0x9000, version)},
                                .interoperability = {bytes(2, "0100"), bytes(1, index)}},
                               order);
      EXPECT_EQ(result->exif.isR98Interoperability, isR98) << version << index;
      EXPECT_STREQ(result->exif.interoperabilityVersion, kept) << version << index;
    }
}

TEST_F(DirectoriesTest, RepeatedInteroperabilityDirectoriesAddUpInOrder) {
  const Entry first = interoperabilityPointer(), second = pointerTo(Directory::gps, 0xA005);
  const struct {
    std::vector<Entry> exif;
    const char* expected;
  } cases[] = {{{version(), first, second}, "0200"},
               {{version(), first, second, first}, "0100"},
               {{version(), first, longs(0xA005, {0xFFFFFF})}, "0100"}};
  for (const auto& [exif, expected] : cases) {
    const auto result = read({.image = {exifPointer()},
                              .exif = exif,
                              .interoperability = {bytes(1, "R98"), bytes(2, "0100")},
                              .gps = {bytes(1, "R03"), bytes(2, "0200")}});
    EXPECT_EQ(result->exif.isR98Interoperability, 1u);
    EXPECT_STREQ(result->exif.interoperabilityVersion, expected);
  }
}

}  // namespace
}  // namespace exifkeep::test

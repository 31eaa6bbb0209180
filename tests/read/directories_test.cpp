// Which directories are read and from where: the GPS position and its oddities, IFD1, the
// interoperability directory and the version rule, records that stay untouched.
#include "read/reading.h"

namespace exifkeep::test {
namespace {

using DirectoriesTest = ReadTest;

const Entry speedRef = text(12, "M");

// A record that nobody reset: one flag holds a value that no reader stores.
template <class Record>
Record marked(uint32_t Record::*flag) {
  Record record = {};
  record.*flag = 7;
  return record;
}

TEST_F(DirectoriesTest, GpsPositionComesFromTheLastPointersAndTheFirstExifDirectory) {
  const uint32_t other = 100;  // an Exif pointer that leads nowhere
  Picture twoExifPointers{.image = {exifPointer(), longs(0x8769, {other}), longs(0x8825, {0})},
                          .exif = {version()},
                          .gps = {speedRef}};
  twoExifPointers.image[2] = longs(0x8825, {twoExifPointers.offsetOf(Directory::gps) + other -
                                            twoExifPointers.offsetOf(Directory::exif)});
  const Entry lies = longs(0x8825, {3});
  const struct {
    const char* what;
    Picture picture;
    bool expected;
    bool withoutThumbnail;
  } cases[] = {
      {"both pointers", {.image = {exifPointer(), gpsPointer()}}, true, true},
      {"GPS first", {.image = {gpsPointer(), exifPointer()}}, true, true},
      {"the last GPS pointer counts", {.image = {exifPointer(), lies, gpsPointer()}}, true, true},
      {"and not the first", {.image = {exifPointer(), gpsPointer(), lies}}, false, false},
      {"two Exif pointers", twoExifPointers, true, true},
      {"no pointer", {.image = {exifPointer()}}, false, false},
      {"pointers of IFD1",
       {.image = {exifPointer()}, .thumbnail = {exifPointer(), gpsPointer()}},
       true,
       false},
      {"one pointer in each",
       {.image = {exifPointer()}, .thumbnail = {gpsPointer()}},
       false,
       false},
      {"IFD0 has the last word",
       {.image = {exifPointer(), gpsPointer()}, .thumbnail = {exifPointer(), lies}},
       true,
       true},
      // A position of 0 or less from IFD1 keeps even a good one of IFD0 from being read.
      {"a negative position from IFD1",
       {.image = {exifPointer(), gpsPointer()},
        .thumbnail = {longs(0x8769, {0x7FFFFFFF}), longs(0x8825, {0})}},
       false,
       true},
  };
  for (auto [what, picture, expected, withoutThumbnail] : cases)
    for (const Order order : bothOrders) {
      picture.exif = {version()};
      picture.gps = {speedRef};
      const std::string file = jpegBytes(tiffBytes(picture, order), jfifSegment());
      const auto result = read(file);
      EXPECT_TRUE(result->succeeded) << what;
      EXPECT_EQ(result->gps.hasGpsSpeedRef, expected) << what;
      ExifIfdRecord exif;
      ImageIfdRecord primary;
      GpsIfdRecord gps = {};
      ExifReader reader;
      EXPECT_TRUE(readExifMetadata(reader, path("x.jpg").c_str(), exif, primary, nullptr, &gps));
      EXPECT_EQ(gps.hasGpsSpeedRef, withoutThumbnail) << what;
      // The reader that takes a path reads IFD0 for itself.
      gps = {};
      ExifReader fresh;
      readGpsDirectory(fresh, path("x.jpg").c_str(), gps);
      EXPECT_EQ(gps.hasGpsSpeedRef, withoutThumbnail) << what;
    }
}

TEST_F(DirectoriesTest, ThumbnailDirectoryIsWhereTheLinkOfIfd0Leads) {
  const Picture without{.image = {exifPointer()}, .exif = {version()}};
  Picture with = without;
  with.thumbnail = {shorts(0x103, {6}), longs(0x201, {1234}), longs(0x202, {5})};
  for (const Order order : bothOrders)
    for (const bool isJpeg : {false, true}) {
      const auto wrapped = [&](const Picture& picture) {
        const std::string tiff = tiffBytes(picture, order);
        return isJpeg ? jpegBytes(tiff, jfifSegment()) : tiff;
      };
      const auto result = read(wrapped(with));
      EXPECT_EQ(result->thumbnail.compression, 6);
      EXPECT_EQ(countPresentImageFields(result->thumbnail), 1u);
      EXPECT_EQ(result->reader.thumbnailIfdOffset,
                int32_t(with.offsetOf(Directory::thumbnail)) + (isJpeg ? 30 : 0));
      EXPECT_EQ(result->thumbnail.referenceBlackWhite[1].numerator, isJpeg ? 128u : 255u);
      const auto absent = read(wrapped(without));
      auto record = marked(&ImageIfdRecord::hasMake);
      EXPECT_FALSE(readThumbnailDirectory(absent->reader, path("x.jpg").c_str(), record));
      EXPECT_EQ(record.hasMake, 0u);
      EXPECT_EQ(absent->reader.thumbnailIfdOffset, 0);
    }
}

TEST_F(DirectoriesTest, InteroperabilityNeedsExactlyR98AndExif21) {
  const struct {
    const char* version;
    const char* index;
    bool expected;
    const char* kept;
  } cases[] = {
      {"0220", "R98", true, "0100"},  {"0210", "R98", true, "0100"},
      {"0209", "R98", false, ""},     {"0200", "R98", false, ""},
      {"02a0", "R98", false, ""},     {"abcd", "R98", false, ""},
      {"9", "R98", false, ""},        {"210", "R98", true, "0100"},
      {"0220", "r98", false, "0100"}, {"0220", "R98x", false, "0100"},
      {"0220", "R9", false, "0100"},  {"0200", "R03", false, "0100"},
  };
  for (const auto& [version, index, expected, kept] : cases)
    for (const Order order : bothOrders) {
      // The index stands behind the version and the version behind the pointer: the rule is last.
      const ExifIfdRecord& exif =
          read({.image = {exifPointer()},
                .exif = {interoperabilityPointer(), bytes(0x9000, version)},
                .interoperability = {bytes(2, "0100"), bytes(1, index, typeAscii)}},
               order)
              ->exif;
      EXPECT_EQ(exif.isR98Interoperability, expected) << version << index;
      EXPECT_STREQ(exif.interoperabilityVersion, kept) << version << index;
    }
}

TEST_F(DirectoriesTest, RepeatedInteroperabilityDirectoriesAddUpInOrder) {
  const auto second = pointerTo(Directory::gps, 0xA005);
  const auto versionAfter = [&](std::vector<Entry> pointers) {
    pointers.push_back(version());
    const auto result = read({.image = {exifPointer()},
                              .exif = std::move(pointers),
                              .interoperability = {bytes(1, "R98"), bytes(2, "0100")},
                              .gps = {bytes(1, "R03"), bytes(2, "0200")}});
    EXPECT_EQ(result->exif.isR98Interoperability, 1u);
    return std::string(result->exif.interoperabilityVersion);
  };
  const Entry first = interoperabilityPointer();
  EXPECT_EQ(versionAfter({first, second}), "0200");
  EXPECT_EQ(versionAfter({second, first}), "0100");
  EXPECT_EQ(versionAfter({first, second, first}), "0100");
  EXPECT_EQ(versionAfter({first, longs(0xA005, {0xFFFFFF})}), "0100");
}

TEST_F(DirectoriesTest, FilesThatAreNoExifFilesLeaveRecordsUntouched) {
  const std::string noVersion = tiffBytes({.image = {exifPointer(), gpsPointer()},
                                           .exif = {shorts(0x9209, {1})},
                                           .gps = {speedRef},
                                           .thumbnail = {shorts(0x103, {6})}},
                                          Order::ii);
  const std::string good = tiffBytes({.image = {exifPointer()}, .exif = {version()}}, Order::ii);
  const std::string paths[] = {fileOf(noVersion), fileOf(good, "x.png"), path("missing.jpg")};
  for (const std::string& name : paths) {
    ExifReader reader;
    auto exif = marked(&ExifIfdRecord::hasFlash);
    auto primary = marked(&ImageIfdRecord::hasMake);
    auto gps = marked(&GpsIfdRecord::hasGpsDop);
    EXPECT_FALSE(readExifDirectory(reader, name.c_str(), exif));
    EXPECT_FALSE(readPrimaryDirectory(reader, name.c_str(), primary));
    EXPECT_FALSE(readGpsDirectory(reader, name.c_str(), gps));
    EXPECT_FALSE(readExifMetadata(reader, name.c_str(), exif, primary, nullptr, &gps));
    EXPECT_TRUE(exif.hasFlash == 7 && primary.hasMake == 7 && gps.hasGpsDop == 7) << name;
  }
  ExifReader reader;
  auto gps = marked(&GpsIfdRecord::hasGpsDop);
  EXPECT_FALSE(readGpsDirectory(reader, fileOf(good).c_str(), gps)) << "no GPS pointer";
  EXPECT_EQ(gps.hasGpsDop, 7u);
}

TEST_F(DirectoriesTest, ResetGivesTheStandardsDefaults) {
  GpsIfdRecord gps;
  resetGpsIfdRecord(gps);
  EXPECT_EQ(std::string(gps.gpsVersionId, 5), std::string("22\0\0\0", 5));
  EXPECT_EQ(std::string(gps.gpsSpeedRef) + gps.gpsTrackRef + gps.gpsImgDirectionRef, "KTT");
  EXPECT_EQ(std::string(gps.gpsDestBearingRef) + gps.gpsDestDistanceRef, "TK");
  EXPECT_EQ(countPresentGpsFields(gps), 0u);
  ExifReader reader;
  ImageIfdRecord image;
  resetImageIfdRecord(reader, image);
  EXPECT_EQ(image.bitsPerSample[2], 8);
  EXPECT_EQ(image.resolutionUnit + image.orientation * 10 + image.yCbCrPositioning * 100, 112);
  EXPECT_EQ(image.referenceBlackWhite[0].numerator, 255u);
  EXPECT_EQ(image.referenceBlackWhite[3].numerator + image.referenceBlackWhite[0].denominator, 0u);
  ExifIfdRecord exif;
  resetExifIfdRecord(reader, exif);
  EXPECT_EQ(exif.focalPlaneResolutionUnit, 2);
  EXPECT_EQ(exif.sceneType, 1);
}

}  // namespace
}  // namespace exifkeep::test

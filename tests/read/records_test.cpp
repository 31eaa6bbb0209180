// SPDX-License-Identifier: MIT
#include <exifkeep/exifkeep.h>
#include <gmock/gmock.h>

#include <array>
#include <cmath>

#include "full_picture.h"
#include "read/reading.h"

namespace exifkeep::test {
namespace {

using FetchTest = ReadTest;

constexpr uint32_t all = 0xFFFFFFFF, distant = 0x7FFFFFF0;

// Fields of the full picture that tests of lists and saved files do not check.
TEST_F(FetchTest, ReadsFieldsThatAreNeitherShownNorSaved) {
  for (const Order order : bothOrders) {
    const auto result = read(fullPicture(), order);
    const ImageIfdRecord& primary = result->primary;
    EXPECT_TRUE(primary.hasPhotometricInterpretation && primary.hasStripOffsets);
    EXPECT_TRUE(primary.hasRowsPerStrip && primary.hasStripByteCounts);
    EXPECT_EQ(primary.photometricInterpretation, 10u);
    EXPECT_EQ(primary.stripOffsets, 70003u);
    EXPECT_EQ(primary.rowsPerStrip, 70004u);
    EXPECT_EQ(primary.stripByteCounts, 70005u);
    EXPECT_TRUE(result->gps.hasGpsDestLatitudeRef && result->gps.hasGpsDestLongitude);
    EXPECT_STREQ(result->gps.gpsDestLatitudeRef, "Sh");
    EXPECT_EQ(result->gps.gpsDestLongitude[2].denominator, 56u);
    EXPECT_STREQ(result->exif.interoperabilityVersion, "0100");
  }
}

TEST_F(FetchTest, ResetGivesTheDefaults) {
  for (const bool isJpeg : {true, false}) {
    const std::string tiff = tiffBytes(fullPicture(), Order::ii);
    const auto result = read(isJpeg ? jpegBytes(tiff) : tiff);
    resetImageIfdRecord(result->reader, result->primary);
    resetExifIfdRecord(result->reader, result->exif);
    resetGpsIfdRecord(result->gps);
    EXPECT_FALSE(result->reader.makerNoteBuffer || result->reader.userCommentBuffer);
    ImageIfdRecord primary = {};
    for (uint16_t& bits : primary.bitsPerSample) bits = 8;
    primary.xResolution = primary.yResolution = {1, 72};
    primary.resolutionUnit = 2;
    primary.referenceBlackWhite[0].numerator = 255;
    primary.referenceBlackWhite[1].numerator = isJpeg ? 128 : 255;
    primary.referenceBlackWhite[2].numerator = isJpeg ? 128 : 255;
    primary.yCbCrPositioning = primary.orientation = 1;
    ExifIfdRecord exif = {};
    exif.focalPlaneResolutionUnit = 2;
    exif.sceneType = 1;
    GpsIfdRecord gps = {};
    gps.gpsVersionId[0] = gps.gpsVersionId[1] = '2';
    gps.gpsSpeedRef[0] = gps.gpsDestDistanceRef[0] = 'K';
    gps.gpsTrackRef[0] = gps.gpsImgDirectionRef[0] = gps.gpsDestBearingRef[0] = 'T';
    EXPECT_EQ(std::memcmp(&result->primary, &primary, sizeof primary), 0);
    EXPECT_EQ(std::memcmp(&result->exif, &exif, sizeof exif), 0);
    EXPECT_EQ(std::memcmp(&result->gps, &gps, sizeof gps), 0);
  }
}

TEST_F(FetchTest, TheTagAndNotTheTypeDecidesHowAValueIsRead) {
  for (const Order order : bothOrders) {
    const auto result =
        read({.image = {exifPointer(), longs(0x112, {6}), shorts(0x100, {640}), shorts(0x101, {1}),
                        shorts(0x111, {2}), shorts(0x116, {3}), shorts(0x117, {4}),
                        shorts(0x102, {5, 6, 5}).withCount(1)},
              .exif = {version(), shorts(0x8827, {200, 400}), shorts(0xA002, {5}),
                       shorts(0xA003, {6}), bytes(0x9101, std::string("\0\2\3\0", 4))}},
             order);
    // Only in II are the first two bytes of a LONG its low half.
    EXPECT_EQ(result->primary.orientation, order == Order::ii ? 6 : 0);
    const ImageIfdRecord& primary = result->primary;
    EXPECT_THAT((std::array{primary.imageWidth, primary.imageLength, primary.stripOffsets,
                            primary.rowsPerStrip, primary.stripByteCounts,
                            result->exif.pixelXDimension, result->exif.pixelYDimension}),
                testing::ElementsAre(640, 1, 2, 3, 4, 5, 6));
    EXPECT_THAT(result->primary.bitsPerSample, testing::ElementsAre(5, 6, 5));
    EXPECT_TRUE(result->exif.hasComponentsConfiguration);
    EXPECT_EQ(result->exif.isoSpeedRatings, 200);
    EXPECT_STREQ(result->exif.componentsConfiguration, "");
  }
}

TEST_F(FetchTest, SmallTextsAreInTheirEntryOrAtAnOffset) {
  const Entry small = text(0x9290, "37").atOffset(), trailer = bytes(0x9291, std::string(256, 'm'));
  // A note of such a length that the next value begins at `offset`, in a directory of this many
  // entries.
  const auto fillTo = [](size_t offset, size_t entries = 4) {
    return bytes(0x927C, std::string(offset - (8 + 2 + 12 + 4) - (2 + 12 * entries + 4), 'm'));
  };
  const std::tuple<const char*, std::vector<Entry>, Entry, std::string, std::string> cases[] = {
      {"ours", {}, small, "37", "37"},
      {"ours, though the offset reads 20", {fillTo(0x3032)}, small, "37", "37"},
      {"after zeros", {fillTo(0x3032, 5), field(0x927C, 7, 2, 0)}, small, "37", "37"},
      {"after another", {fillTo(0x3030, 5), text(0x9292, "9").atOffset()}, small, "37", "37"},
      {"after that number", {fillTo(0x3032, 5), shorts(0x8827, {0x3032})}, small, "37", "37"},
      {"not ours, which are even", {fillTo(0x3033)}, small, "30", "37"},
      {"an odd offset that is no text", {fillTo(0x0133)}, small, "37", "37"},
      {"text with its NUL", {}, text(0x9290, "25"), "25", "25"},
      {"text of four", {fillTo(0x133)}, bytes(0x9290, "8.31", typeByte), "8.31", "8.31"},
      {"text of two", {}, bytes(0x9290, "25\1\2").withCount(2), "25", "25"},
      {"an offset of 0x132", {}, bytes(0x9290, "2\1", typeAscii), "mm", ""},
      {"no text", {}, text(0x9290, ""), "", ""},
      {"an offset of 256 is no empty text", {}, field(0x9290, typeAscii, 1, 256), "m", "m"},
      {"no text type", {}, field(0x9290, typeShort, 2, 0x31313131), "", ""},
      {"five bytes", {}, field(0x9290, typeAscii, 5, 0x31313131), "", ""},
  };
  for (const auto& [what, before, entry, ii, mm] : cases)
    for (const Order order : bothOrders) {
      std::vector<Entry> entries = before;
      entries.insert(entries.end(), {entry, trailer});
      EXPECT_EQ(readExif(entries, order)->exif.subSecTime, order == Order::ii ? ii : mm) << what;
    }
}

TEST_F(FetchTest, SmallListsOfShortsAreInTheirEntryOrAtAnOffset) {
  const Entry odd = bytes(0x9291, "12345");
  const std::tuple<Entry, std::array<uint16_t, 2>, std::array<uint16_t, 2>> cases[] = {
      {shorts(0xA214, {7, 8}).atOffset(), {7, 8}, {7, 8}},
      {shorts(0xA214, {640, 480}), {640, 480}, {640, 480}},
      {shorts(0xA214, {9999, 0}).withCount(1), {9999, 0}, {9999, 0}},
      // 8 as an offset: the number of IFD0's entries and its tag. In MM it is 0x80000.
      {shorts(0xA214, {8, 0}), {1, 0x8769}, {8, 0}},
      {shorts(0xA214, {8, 9}).withCount(1), {8, 0}, {8, 0}},
      {longs(0xA214, {0x50006}), {0, 0}, {0, 0}},
  };
  for (const auto& [entry, ii, mm] : cases)
    for (const Order order : bothOrders) {
      const auto result = readExif({odd, entry, field(0x920A, typeShort, 1, all)}, order);
      EXPECT_THAT(result->exif.subjectLocation,
                  testing::ElementsAreArray(order == Order::ii ? ii : mm));
      EXPECT_EQ(result->exif.focalLength.numerator, 0u) << "rationals are always at an offset";
    }
  // As an offset, 0x11170 would be within the file.
  const auto large =
      readExif({shorts(0xA214, {0x1170, 1}), bytes(0x927C, std::string(99999, 'm'))});
  EXPECT_THAT(large->exif.subjectLocation, testing::ElementsAre(0x1170, 1));
  const auto area = readExif({shorts(0x9214, {640, 480})});
  EXPECT_THAT(area->exif.subjectArea, testing::ElementsAre(640, 480, 0, 0));
}

TEST_F(FetchTest, TextsAreCutToTheirFields) {
  const std::string letters(300, 'm'), date = "2002:05:14 10:20:30";
  const auto make = [&](const Entry& entry) {
    return std::string(read({.image = {exifPointer(), entry}, .exif = {version()}})->primary.make);
  };
  EXPECT_EQ(make(text(0x10F, "abcdef").withCount(3)), "abc");
  for (const uint32_t count : {4u, 20u, all}) {
    const auto result = readExif({text(0x9003, date + " and more").withCount(count)});
    EXPECT_EQ(result->exif.dateTimeOriginal, date.substr(0, count)) << count;
  }
  for (const auto& [count, name] : {std::pair{14u, "SOUND001.WAVmm"}, {15u, ""}}) {
    const auto result = readExif({bytes(0xA004, "SOUND001.WAV" + letters).withCount(count)});
    EXPECT_EQ(result->exif.hasRelatedSoundFile, count == 14);
    EXPECT_STREQ(result->exif.relatedSoundFile, name);
  }
}

TEST_F(FetchTest, SubjectAreaHasTwoToFourValues) {
  // Counts of entries that follow each other, and what is read.
  const std::pair<std::vector<uint32_t>, std::vector<uint16_t>> cases[] = {
      {{1}, {0, 0, 0, 0}}, {{2}, {7, 8, 0, 0}},  {{3}, {7, 8, 9, 0}},
      {{5}, {0, 0, 0, 0}}, {{4}, {7, 8, 9, 10}}, {{4, 1}, {7, 8, 0, 0}}};
  for (const auto& [counts, expected] : cases) {
    std::vector<Entry> entries;
    for (const uint32_t count : counts)
      entries.push_back(shorts(0x9214, {7, 8, 9, 10, 11}).withCount(count));
    const auto result = readExif(entries);
    EXPECT_TRUE(result->exif.hasSubjectArea);
    EXPECT_THAT(result->exif.subjectArea, testing::ElementsAreArray(expected));
  }
}

TEST_F(FetchTest, CommentsAndMakerNotesAreReplacedByLaterOnes) {
  const Entry longer = bytes(0x9286, "ASCII+++comment"), later = bytes(0x9286, "UNICODE!");
  const std::tuple<std::vector<Entry>, std::string, std::string> cases[] = {
      {{longer.withCount(7)}, "", ""},
      {{longer.withCount(9)}, "ASCII+++", "c"},
      {{bytes(0x9286, std::string("JIS\0zzzzx", 9))}, "JIS", "x"},
      {{longer, later}, "UNICODE!", ""},
      {{longer, later.withCount(7)}, "ASCII+++", "comment"},
  };
  for (const auto& [entries, code, comment] : cases) {
    const auto result = readExif(entries);
    const ExifIfdRecord& exif = result->exif;
    EXPECT_EQ(exif.hasUserComment, !code.empty()) << code << comment;
    EXPECT_EQ(std::string(exif.userCommentCode, 8).c_str(), code);
    EXPECT_EQ(!exif.userComment, comment.empty());
    EXPECT_EQ(std::string(exif.userComment, exif.userComment + exif.userCommentLength), comment);
  }
  const auto notes = readExif({bytes(0x927C, "the first note"), bytes(0x927C, "last one")});
  ASSERT_EQ(notes->exif.makerNoteLength, 8u);
  EXPECT_EQ(std::memcmp(notes->exif.makerNote, "last one", 8), 0);
}

TEST_F(FetchTest, ValuesOutsideTheFileKeepTheirDefaults) {
  const Picture beyond{
      .image = {exifPointer(), gpsPointer(), field(0x11A, typeRational, 1, distant),
                field(0x102, typeShort, 3, distant), field(0x10F, typeAscii, 9, all)},
      .exif = {version(), field(0x927C, typeUndefined, all, distant)},
      .gps = {text(12, "N")}};
  const Picture halved{
      .image = {exifPointer()},
      .exif = {version(), bytes(0x927C, "a note").withCount(all), rationals(0x920A, {50, 7})}};
  for (const Order order : bothOrders) {
    const std::string file = tiffBytes(beyond, order), longer = tiffBytes(halved, order);
    const auto result = read(file);
    const ImageIfdRecord& primary = result->primary;
    EXPECT_TRUE(primary.hasXResolution && primary.hasBitsPerSample && primary.hasMake);
    EXPECT_EQ(primary.xResolution.denominator, 72u);
    EXPECT_EQ(primary.bitsPerSample[2], 8);
    EXPECT_EQ(primary.referenceBlackWhite[1].numerator, 255u);
    EXPECT_STREQ(primary.make, "");
    EXPECT_TRUE(result->exif.hasMakerNote);
    EXPECT_EQ(result->exif.makerNoteLength, 0u);
    // The file ends in its last entry: after one byte of the value, after the count, or before it.
    EXPECT_STREQ(read(file.substr(0, file.size() - 7))->gps.gpsSpeedRef, "N");
    EXPECT_STREQ(read(file.substr(0, file.size() - 8))->gps.gpsSpeedRef, "K");
    EXPECT_FALSE(read(file.substr(0, file.size() - 9))->gps.hasGpsSpeedRef);
    // The file ends in the middle of the last rational. A maker note is truncated with the file.
    const auto half = read(longer.substr(0, longer.size() - 3));
    EXPECT_EQ(half->exif.focalLength.numerator, 50u);
    EXPECT_EQ(half->exif.focalLength.denominator, 0u);
    EXPECT_EQ(half->exif.makerNoteLength, 6u + 5u);
  }
}

using DirectoriesTest = ReadTest;

const Entry speedRef = text(12, "M");

TEST_F(DirectoriesTest, GpsPositionComesFromTheLastPointersAndTheFirstExifDirectory) {
  using Entries = std::vector<Entry>;
  const Entry exif = exifPointer(), gps = gpsPointer(), lies = longs(0x8825, {3});
  // With an Exif pointer of 100 instead, the GPS pointer to the position after the directory.
  const int64_t madeUp = 100 + Picture::entriesSize({version()});
  const std::tuple<const char*, Entries, Entries, bool> cases[] = {
      {"the last GPS pointer counts", {exif, lies, gps}, {}, true},
      {"and not the first", {exif, gps, lies}, {}, false},
      {"the last Exif pointer", {exif, longs(0x8769, {100}), longs(0x8825, {madeUp})}, {}, true},
      {"pointers of IFD1", {exif}, {exif, gps}, true},
      {"IFD0 has the last word", {exif, gps}, {exif, lies}, true},
      // If IFD1 gives a position of 0 or less, even a valid one of IFD0 is not used.
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
  // 1 + 3 * 0.1f + 0.01f, rounded only at the end, is greater than the number nearest to 1.31.
  EXPECT_EQ(versionOf("0131"), std::nextafter(1.31f, 2.0f));
  // Characters that are not digits count by their distance from '0'.
  EXPECT_EQ(versionOf("0A/0"), static_cast<float>(17 - double{0.1f}));
  EXPECT_EQ(GetExifVersion(fileOf(jpegStart + jpegEnd).c_str()), 0.0f);
}

TEST_F(DirectoriesTest, InteroperabilityNeedsExactlyR98AndExif21) {
  const std::tuple<const char*, const char*, bool, const char*> cases[] = {
      {"0210", "R98", true, "0100"},   {"0209", "R98", false, ""},
      {"abcd", "R98", false, ""},      {"210", "R98", true, "0100"},
      {"0220", "R98x", false, "0100"}, {"0200", "R03", false, "0100"},
  };
  for (const auto& [version, index, isR98, kept] : cases)
    for (const Order order : bothOrders) {
      // The version follows the pointer, so the rule must be applied last.
      const auto result = read({.image = {exifPointer()},
                                .exif = {interoperabilityPointer(), bytes(0x9000, version)},
                                .interoperability = {bytes(2, "0100"), bytes(1, index)}},
                               order);
      EXPECT_EQ(result->exif.isR98Interoperability, isR98) << version << index;
      EXPECT_STREQ(result->exif.interoperabilityVersion, kept) << version << index;
    }
}

}  // namespace
}  // namespace exifkeep::test

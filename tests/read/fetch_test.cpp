// How the values of entries reach the records: every row in both byte orders, then the rules that
// differ from what an entry's type and count would say.
#include "read/tag_tables.h"

#include <algorithm>

#include "read/reading.h"

namespace exifkeep::test {
namespace {

using FetchTest = ReadTest;

// An entry with a value of its own for a row, as the row's type has it.
Entry entryFor(const TagRow& row) {
  const int64_t n = row.tag;
  switch (row.fetch) {
    case Fetch::shortValue:
      return shorts(row.tag, {n ^ 0x4321});
    case Fetch::longValue:
    case Fetch::shortOrLong:
      return longs(row.tag, {n << 16 | 0x4321});
    case Fetch::rationals:
    case Fetch::shorts:
    case Fetch::subjectArea: {
      const unsigned unit = row.fetch == Fetch::rationals ? 4 : 2;
      std::string value;
      for (unsigned i = 0; i < row.capacity / unit; ++i)
        value += number(static_cast<uint64_t>(n * 0x10203 + i), unit);
      const auto type = static_cast<uint16_t>(row.type);
      return {row.tag, type, row.limit, value, unit, true};
    }
    case Fetch::rawByte:
      return bytes(row.tag, "\x7F");
    case Fetch::rawText:
      return bytes(row.tag, std::string("1998").substr(0, row.limit));
    default:
      return text(row.tag, std::to_string(n) + "text").atOffset();
  }
}

// Compares field by field with what the entries were made from; this host is little-endian.
void expectValues(TagTable table, const void* record, const std::vector<uint16_t>& excepted) {
  const auto* start = static_cast<const char*>(record);
  for (const TagRow& row : table) {
    if (row.flag == noField || std::ranges::count(excepted, row.tag)) continue;
    uint32_t flag;
    std::memcpy(&flag, start + row.flag, sizeof flag);
    EXPECT_EQ(flag, 1u) << row.tag;
    std::string expected = entryFor(row).value;
    expected.resize(row.capacity);
    EXPECT_EQ(std::string(start + row.field, row.capacity), expected) << row.tag;
  }
}

TEST_F(FetchTest, EveryRowReadsTheSameFromBothByteOrders) {
  const std::vector<uint16_t> pointers = {tag::exifIfdPointer, tag::gpsIfdPointer};
  const std::vector<uint16_t> buffers = {tag::makerNote, tag::userComment};
  Picture picture{.image = {exifPointer(), gpsPointer()}, .exif = {interoperabilityPointer()}};
  for (const TagRow& row : imageTags)
    if (!std::ranges::count(pointers, row.tag)) picture.image.push_back(entryFor(row));
  for (const TagRow& row : exifTags)
    if (row.tag != tag::interoperabilityIfdPointer) picture.exif.push_back(entryFor(row));
  for (const TagRow& row : gpsTags) picture.gps.push_back(entryFor(row));
  picture.thumbnail.assign(picture.image.begin() + 2, picture.image.end());
  picture.interoperability = {bytes(1, std::string("R98\0", 4)), bytes(2, "0100")};
  for (const Order order : bothOrders)
    for (const std::string& before : {std::string(), jfifSegment()}) {
      const auto result = read(jpegBytes(tiffBytes(picture, order), before));
      ASSERT_TRUE(result->succeeded);
      expectValues(imageTags, &result->primary, pointers);
      expectValues(imageTags, &result->thumbnail, pointers);
      expectValues(exifTags, &result->exif, buffers);
      expectValues(gpsTags, &result->gps, {});
      EXPECT_EQ(result->exif.makerNoteLength, 10u);
      EXPECT_EQ(std::memcmp(result->exif.makerNote, "37500text", 10), 0);
      EXPECT_EQ(std::string(result->exif.userCommentCode, 8), "37510tex");
      EXPECT_EQ(result->exif.userCommentLength, 2u);
      EXPECT_STREQ(reinterpret_cast<const char*>(result->exif.userComment), "t");
      // The version is 1998, so these rules apply.
      EXPECT_EQ(result->exif.isR98Interoperability, 1u);
      EXPECT_STREQ(result->exif.interoperabilityVersion, "0100");
      EXPECT_EQ(countPresentImageFields(result->primary), 24u);
      EXPECT_EQ(countPresentGpsFields(result->gps), 29u);
      EXPECT_EQ(countPresentExifFields(result->exif), 52u);
      resetExifIfdRecord(result->reader, result->exif);
      EXPECT_EQ(countPresentExifFields(result->exif), 0u);
      EXPECT_FALSE(result->reader.makerNoteBuffer || result->reader.userCommentBuffer);
    }
}

TEST_F(FetchTest, TheTagChoosesTheWayNotTheType) {
  for (const Order order : bothOrders) {
    const auto result =
        read({.image = {exifPointer(), longs(0x112, {6}), shorts(0x100, {640}), longs(0x101, {480}),
                        shorts(0x102, {5, 6, 5}).withCount(1), shorts(0x106, {2})},
              .exif = {version(), text(0x9290, "25"), text(0x9291, "37").atOffset(),
                       shorts(0x8827, {200, 400}), bytes(0x9101, std::string("\0\2\3\0", 4)),
                       bytes(0xA000, "01"), bytes(0xA300, "\3\4\5\6")}},
             order);
    const ImageIfdRecord& primary = result->primary;
    // The first two bytes of a LONG are its low half in II only.
    EXPECT_EQ(primary.orientation, order == Order::ii ? 6 : 0);
    EXPECT_EQ(primary.imageWidth, 640u);
    EXPECT_EQ(primary.imageLength, 480u);
    EXPECT_EQ(primary.bitsPerSample[1], 6);
    EXPECT_EQ(primary.bitsPerSample[2], 5);
    EXPECT_EQ(primary.photometricInterpretation, 2u);
    const ExifIfdRecord& exif = result->exif;
    EXPECT_TRUE(exif.hasSubSecTime);
    EXPECT_STREQ(exif.subSecTime, "") << "kept in the entry, so not found";
    EXPECT_STREQ(exif.subSecTimeOriginal, "37");
    EXPECT_EQ(exif.isoSpeedRatings, 200);
    EXPECT_TRUE(exif.hasComponentsConfiguration);
    EXPECT_STREQ(exif.componentsConfiguration, "");
    EXPECT_STREQ(exif.flashpixVersion, "01");
    EXPECT_EQ(exif.fileSource, 3);
  }
}

TEST_F(FetchTest, TextsKeepToTheirFields) {
  const std::string letters(300, 'm'), date = "2002:05:14 10:20:30";
  const uint32_t all = 0xFFFFFFFF;
  const auto make = [&](const Entry& entry) {
    return std::string(read({.image = {exifPointer(), entry}, .exif = {version()}})->primary.make);
  };
  EXPECT_EQ(make(text(0x10F, letters)), letters.substr(0, 255));
  EXPECT_EQ(make(text(0x10F, letters).withCount(all)), letters.substr(0, 255));
  EXPECT_EQ(make(text(0x10F, "abcdef").withCount(3)), "abc");

  const auto original = [&](const Entry& entry) {
    const auto result = readExif({entry});
    EXPECT_TRUE(result->exif.hasDateTimeOriginal);
    return std::string(result->exif.dateTimeOriginal);
  };
  for (const uint32_t count : {19u, 20u, 25u, all})
    EXPECT_EQ(original(text(0x9003, date + " and more").withCount(count)), date) << count;
  EXPECT_EQ(original(text(0x9003, date).withCount(4)), "2002");

  const struct {
    uint32_t count;
    const char* name;
  } soundCases[] = {{13, "SOUND001.WAV"}, {14, "SOUND001.WAVE+"}, {15, ""}, {all, ""}};
  for (const auto& [count, name] : soundCases) {
    const auto result = readExif({bytes(0xA004, name + letters, typeAscii).withCount(count)});
    EXPECT_EQ(result->exif.hasRelatedSoundFile, *name != '\0') << count;
    EXPECT_EQ(std::string(result->exif.relatedSoundFile),
              (name + letters).substr(0, *name ? count : 0));
  }

  const auto unique = readExif({text(0xA420, std::string(40, 'u')), text(0x9292, letters)});
  EXPECT_EQ(std::string(unique->exif.imageUniqueId, 34), std::string(34, 'u'));
  EXPECT_EQ(std::string(unique->exif.subSecTimeDigitized, 34), std::string(34, 'm'));
  EXPECT_FALSE(unique->exif.hasSubSecTimeOriginal);
}

TEST_F(FetchTest, SubjectAreaHasTwoToFourValues) {
  const struct {
    uint32_t count;
    uint16_t values[4];
  } cases[] = {{1, {0, 0, 0, 0}},  {2, {7, 8, 0, 0}}, {3, {7, 8, 9, 0}},
               {4, {7, 8, 9, 10}}, {5, {0, 0, 0, 0}}, {0xFFFFFFFF, {0, 0, 0, 0}}};
  const Entry area = shorts(0x9214, {7, 8, 9, 10, 11}).atOffset();
  for (const auto& [count, values] : cases)
    for (const Order order : bothOrders) {
      const ExifIfdRecord& exif = readExif({area.withCount(count)}, order)->exif;
      EXPECT_TRUE(exif.hasSubjectArea);
      EXPECT_TRUE(std::ranges::equal(exif.subjectArea, values)) << count;
    }
  const ExifIfdRecord& twice = readExif({area.withCount(4), area.withCount(1)})->exif;
  EXPECT_EQ(twice.subjectArea[1], 8);
  EXPECT_EQ(twice.subjectArea[2], 0);
}

TEST_F(FetchTest, CommentsAndMakerNotesAreReplacedByLaterOnes) {
  const Entry longer = bytes(0x9286, "ASCII+++comment"), later = bytes(0x9286, "UNICODE!");
  const struct {
    const char* what;
    std::vector<Entry> entries;
    const char* code;
    std::string comment;  // "-": no comment at all
  } cases[] = {
      {"7", {longer.withCount(7)}, "", "-"},
      {"8", {longer.withCount(8)}, "ASCII+++", ""},
      {"9", {longer.withCount(9)}, "ASCII+++", "c"},
      {"a zero ends the code", {bytes(0x9286, std::string("JIS\0zzzzx", 9))}, "JIS", "x"},
      {"a shorter one behind a longer", {longer, later}, "UNICODE!", ""},
      {"a refused one behind a longer", {longer, later.withCount(7)}, "ASCII+++", "comment"},
  };
  for (const auto& [what, entries, code, comment] : cases) {
    const auto result = readExif(entries);
    const ExifIfdRecord& exif = result->exif;
    const bool isAbsent = comment == "-";
    EXPECT_EQ(exif.hasUserComment, !isAbsent) << what;
    EXPECT_EQ(std::string(exif.userCommentCode, 8).c_str(), std::string(code)) << what;
    ASSERT_EQ(exif.userCommentLength, isAbsent ? 0 : comment.size()) << what;
    EXPECT_EQ(exif.userComment != nullptr, exif.userCommentLength > 0) << what;
    for (size_t i = 0; i < exif.userCommentLength; ++i) EXPECT_EQ(exif.userComment[i], comment[i]);
  }
  const auto notes = readExif({bytes(0x927C, "the first note"), bytes(0x927C, "last one")});
  ASSERT_EQ(notes->exif.makerNoteLength, 8u);
  EXPECT_EQ(std::memcmp(notes->exif.makerNote, "last one", 8), 0);
}

TEST_F(FetchTest, WhatTheFileDoesNotHoldLeavesTheResetValue) {
  for (const Order order : bothOrders) {
    const uint32_t far = 0x7FFFFFF0;
    const auto result =
        read({.image = {exifPointer(), gpsPointer(), field(0x11A, typeRational, 1, far),
                        field(0x102, typeShort, 3, far), field(0x10F, typeAscii, 9, 0xFFFFFFFF)},
              .exif = {version(), field(0x9214, typeShort, 4, far),
                       field(0x927C, typeUndefined, 0xFFFFFFFF, far)},
              .gps = {field(13, typeRational, 1, far)}},
             order);
    const ImageIfdRecord& primary = result->primary;
    EXPECT_TRUE(primary.hasXResolution && primary.hasBitsPerSample && primary.hasMake);
    EXPECT_EQ(primary.xResolution.numerator, 1u);
    EXPECT_EQ(primary.xResolution.denominator, 72u);
    EXPECT_EQ(primary.bitsPerSample[2], 8);
    EXPECT_STREQ(primary.make, "");
    EXPECT_TRUE(result->exif.hasSubjectArea && result->exif.hasMakerNote &&
                result->gps.hasGpsSpeed);
    EXPECT_EQ(result->exif.makerNoteLength, 0u);

    // The file ends in the middle of the last value: its first half counts. A note with a giant
    // count is what the file holds.
    const Picture picture{.image = {exifPointer()},
                          .exif = {version(), bytes(0x927C, "a note").withCount(0xFFFFFFFF),
                                   rationals(0x920A, {50, 7})}};
    const std::string whole = tiffBytes(picture, order);
    const auto half = read(whole.substr(0, whole.size() - 3));
    EXPECT_TRUE(half->exif.hasFocalLength);
    EXPECT_EQ(half->exif.focalLength.numerator, 50u);
    EXPECT_EQ(half->exif.focalLength.denominator, 0u);
    EXPECT_EQ(half->exif.makerNoteLength, 6u + 5u);

    // The file ends in the last entry: behind its count, and in its value.
    const Picture refs{
        .image = {exifPointer(), gpsPointer()}, .exif = {version()}, .gps = {text(12, "N")}};
    const std::string gps = tiffBytes(refs, order);
    EXPECT_STREQ(read(gps)->gps.gpsSpeedRef, "N");
    for (const size_t missing : {5, 7, 8}) {
      const auto cut = read(gps.substr(0, gps.size() - missing));
      EXPECT_STREQ(cut->gps.gpsSpeedRef, missing < 8 ? "N" : "K") << missing;
      EXPECT_TRUE(cut->gps.hasGpsSpeedRef);
    }
    EXPECT_FALSE(read(gps.substr(0, gps.size() - 9))->gps.hasGpsSpeedRef);
  }
}

}  // namespace
}  // namespace exifkeep::test

// Exif segments as bytes: whole ones written out, the order and form of every entry, entry counts
// against the presence counters, and the limit of the block.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "read/tag_tables.h"
#include "write/jpeg_segment.h"
#include "write/save_fixture.h"
#include "write/save_jpeg.h"

namespace exifkeep::test {
namespace {

// Bytes from hexadecimal text; what stands behind a '#' is a comment. "??" is a byte of a time
// stamp.
std::string bytesOf(const char* hex) {
  std::string bytes;
  for (const char* at = hex; *at;) {
    if (*at == '#')
      at += std::strcspn(at, "\n");
    else if (*at == ' ' || *at == '\n')
      ++at;
    else {
      bytes += *at == '?' ? '?' : static_cast<char>(std::stoi(std::string(at, 2), nullptr, 16));
      at += 2;
    }
  }
  return bytes;
}

// The same with the time stamps, 19 characters, that `expected` leaves open.
std::string masked(std::string bytes, const std::string& expected) {
  const std::string open(19, '?');
  for (size_t at = 0; (at = expected.find(open, at)) != std::string::npos; at += open.size())
    if (at + open.size() <= bytes.size()) bytes.replace(at, open.size(), open);
  return bytes;
}

std::string bytesOf(const GlobalBlock& block) {
  const BlockLock lock(block);
  if (!lock.bytes()) return {};
  return {reinterpret_cast<const char*>(lock.bytes()), segmentSize(lock.bytes())};
}

// As small as a JPEG file gets, with an APP0 that is not embedded.
const std::string smallThumbnail = bytesOf("ff d8 ff e0 00 04 01 02 ff d9");

class SegmentTest : public SaveTest {
 protected:
  SegmentTest() { codecFiles.thumbnail = smallThumbnail; }

  std::string fromRecords(const ExifMetadata& metadata) {
    return bytesOf(buildSegmentFromRecords(*reader_.codec, picture_, nullptr, &metadata.exif,
                                           &metadata.primary, &metadata.thumbnail, &metadata.gps));
  }
  std::string withDefaults(const ExifMetadata& metadata, PRaster* hostThumbnail = nullptr) {
    return bytesOf(buildSegmentWithDefaults(*reader_.codec, picture_, hostThumbnail, metadata.exif,
                                            metadata.primary));
  }

  PRaster picture_ = picture(640, 480);
};

TEST_F(SegmentTest, OfASourceWithNothingButAVersion) {
  ExifMetadata metadata = {};
  metadata.primary.hasExifIfdPointer = 1;
  metadata.exif.hasExifVersion = 1;
  std::memcpy(metadata.exif.exifVersion, "0220", 4);
  const std::string expected = bytesOf(R"(
    ff e1 00 c6 45 78 69 66 00 00 49 49 2a 00 08 00 00 00
    04 00                                # IFD0
    1a 01 05 00 01 00 00 00 3e 00 00 00  # XResolution
    1b 01 05 00 01 00 00 00 46 00 00 00  # YResolution
    32 01 02 00 14 00 00 00 4e 00 00 00  # DateTime
    69 87 04 00 01 00 00 00 62 00 00 00  # Exif directory at 98
    74 00 00 00                          # IFD1 at 116
    48 00 00 00 01 00 00 00 96 00 00 00 01 00 00 00
    ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? 00
    01 00 00 90 07 00 04 00 00 00 30 32 32 30 00 00 00 00
    04 00                                # IFD1
    1a 01 05 00 01 00 00 00 aa 00 00 00
    1b 01 05 00 01 00 00 00 b2 00 00 00
    01 02 04 00 01 00 00 00 ba 00 00 00  # thumbnail at 186
    02 02 04 00 01 00 00 00 04 00 00 00  # 4 bytes long
    00 00 00 00
    48 00 00 00 01 00 00 00 96 00 00 00 01 00 00 00
    ff d8 ff d9)");
  EXPECT_EQ(masked(fromRecords(metadata), expected), expected);
}

TEST_F(SegmentTest, OfDefaultsAndASound) {
  ExifMetadata metadata = {};
  metadata.exif.hasRelatedSoundFile = 1;
  std::memcpy(metadata.exif.relatedSoundFile, "DSC00001.WAV", 12);
  const std::string expected = bytesOf(R"(
    ff e1 02 3a 45 78 69 66 00 00 49 49 2a 00 08 00 00 00
    0b 00                                # IFD0
    0e 01 02 00 0e 00 00 00 92 00 00 00  # ImageDescription
    0f 01 02 00 08 00 00 00 a0 00 00 00  # Make
    10 01 02 00 08 00 00 00 a8 00 00 00  # Model
    12 01 03 00 01 00 00 00 01 00 00 00  # Orientation
    1a 01 05 00 01 00 00 00 b0 00 00 00  # XResolution
    1b 01 05 00 01 00 00 00 b8 00 00 00  # YResolution
    28 01 03 00 01 00 00 00 02 00 00 00  # ResolutionUnit
    32 01 02 00 14 00 00 00 c0 00 00 00  # DateTime
    13 02 03 00 01 00 00 00 02 00 00 00  # YCbCrPositioning
    98 82 02 00 1d 00 00 00 d4 00 00 00  # Copyright
    69 87 04 00 01 00 00 00 f2 00 00 00  # Exif directory at 242
    c4 01 00 00                          # IFD1 at 452
    45 78 69 66 5f 4a 50 45 47 5f 34 32 32 00
    4f 72 76 61 6c 6c 65 00 54 65 73 73 6c 61 72 00
    48 00 00 00 01 00 00 00 96 00 00 00 01 00 00 00
    ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? 00
    43 6f 70 79 72 69 67 68 74 20 28 63 29 20 62 79 20 74 68 65 20 61 75 74 68 6f 72 2e 00 00
    0a 00                                # Exif directory
    00 90 07 00 04 00 00 00 30 32 31 30  # ExifVersion
    03 90 02 00 14 00 00 00 70 01 00 00  # DateTimeOriginal
    04 90 02 00 14 00 00 00 84 01 00 00  # DateTimeDigitized
    01 91 07 00 04 00 00 00 01 02 03 00  # ComponentsConfiguration
    00 a0 07 00 04 00 00 00 30 31 30 30  # FlashpixVersion
    01 a0 03 00 01 00 00 00 01 00 00 00  # ColorSpace
    02 a0 04 00 01 00 00 00 80 02 00 00  # PixelXDimension
    03 a0 04 00 01 00 00 00 e0 01 00 00  # PixelYDimension
    04 a0 02 00 0d 00 00 00 98 01 00 00  # RelatedSoundFile
    05 a0 04 00 01 00 00 00 a6 01 00 00  # interoperability directory at 422
    00 00 00 00
    ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? 00
    ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? ?? 00
    44 53 43 30 30 30 30 31 2e 57 41 56 00 00
    02 00 01 00 02 00 04 00 00 00 52 39 38 00
    02 00 07 00 04 00 00 00 30 31 30 30 00 00 00 00
    07 00                                # IFD1
    03 01 03 00 01 00 00 00 06 00 00 00  # Compression
    1a 01 05 00 01 00 00 00 1e 02 00 00
    1b 01 05 00 01 00 00 00 26 02 00 00
    28 01 03 00 01 00 00 00 02 00 00 00
    01 02 04 00 01 00 00 00 2e 02 00 00  # thumbnail at 558
    02 02 04 00 01 00 00 00 04 00 00 00
    13 02 03 00 01 00 00 00 02 00 00 00
    00 00 00 00
    48 00 00 00 01 00 00 00 48 00 00 00 01 00 00 00
    ff d8 ff d9)");
  const std::string before = nowText(), written = withDefaults(metadata), after = nowText();
  EXPECT_EQ(masked(written, expected), expected);
  const Segment parsed = parseSegment(written);
  const std::string time = parsed.primary.find(306)->data.c_str();
  EXPECT_TRUE(before <= time && time <= after) << before << ' ' << time << ' ' << after;
  EXPECT_EQ(parsed.exif.find(36867)->data.c_str(), time);
  EXPECT_EQ(parsed.exif.find(36868)->data.c_str(), time);

  metadata.primary.hasSoftware = 1;
  std::memcpy(metadata.primary.software, "Test", 4);
  PRaster hostThumbnail = picture(8, 8);
  hostThumbnail.setResolution(0, 11811);
  const Segment named = parseSegment(withDefaults(metadata, &hostThumbnail));
  EXPECT_EQ(named.primary.entries[10].tag, 305u);
  EXPECT_EQ(named.primary.entries[10].data, std::string("Test\0", 5));
  const unsigned places[] = {named.exif.at, named.interoperability->at, named.thumbnail->at,
                             named.thumbnail->end};
  EXPECT_THAT(places, testing::ElementsAre(260, 440, 470, 576));
  EXPECT_EQ(named.thumbnail->find(282)->data, bytesOf("00 00 00 00 01 00 00 00"));
  EXPECT_EQ(named.thumbnail->find(283)->data, bytesOf("2c 01 00 00 01 00 00 00"));
}

// Tag, type and count in written order; a text's count (0 here) is its length + 1.
struct Row {
  unsigned tag, type, count;
};
const std::vector<Row> imageRows = {
    {271, 2, 0}, {272, 2, 0}, {270, 2, 0},  {33432, 2, 0}, {256, 4, 1}, {257, 4, 1}, {258, 3, 3},
    {259, 3, 1}, {282, 5, 1}, {283, 5, 1},  {296, 3, 1},   {305, 2, 0}, {318, 5, 2}, {319, 5, 6},
    {532, 5, 6}, {274, 3, 1}, {306, 2, 20}, {529, 5, 3},   {531, 3, 1},
};
const std::vector<Row> primaryPointers = {{34665, 4, 1}, {34853, 4, 1}};
const std::vector<Row> thumbnailPointers = {{513, 4, 1}, {514, 4, 1}};
const std::vector<Row> exifRows = {
    {36864, 7, 4},  {36867, 2, 0}, {36868, 2, 0}, {37377, 10, 1}, {37378, 5, 1}, {37379, 10, 1},
    {37380, 10, 1}, {37381, 5, 1}, {37382, 5, 1}, {37383, 3, 1},  {37384, 3, 1}, {37385, 3, 1},
    {37386, 5, 1},  {33434, 5, 1}, {33437, 5, 1}, {37122, 5, 1},  {37500, 7, 7}, {37510, 7, 13},
    {40960, 7, 4},  {40961, 3, 1}, {40962, 4, 1}, {40963, 4, 1},  {40964, 2, 0}, {41492, 3, 2},
    {41728, 7, 1},  {41996, 3, 1}, {41994, 3, 1}, {41993, 3, 1},  {41992, 3, 1}, {41991, 3, 1},
    {41990, 3, 1},  {41988, 5, 1}, {41987, 3, 1}, {41986, 3, 1},  {41985, 3, 1}, {37396, 3, 4},
    {34850, 3, 1},  {34852, 2, 0}, {34855, 3, 1}, {34856, 2, 0},  {37520, 2, 0}, {37522, 2, 0},
    {37521, 2, 0},  {41483, 5, 1}, {41486, 5, 1}, {41487, 5, 1},  {41488, 3, 1}, {41493, 5, 1},
    {41729, 7, 1},  {41989, 3, 1}, {42016, 2, 0}, {41495, 3, 1},  {40965, 4, 1},
};
const std::vector<Row> gpsRows = {
    {0, 7, 4},  {6, 5, 1},  {5, 7, 2},  {28, 2, 0}, {29, 2, 0}, {24, 5, 1}, {23, 7, 2}, {26, 5, 1},
    {25, 7, 2}, {20, 5, 3}, {21, 7, 2}, {30, 3, 1}, {11, 5, 1}, {17, 5, 1}, {16, 7, 2}, {2, 5, 3},
    {1, 7, 2},  {4, 5, 3},  {3, 7, 2},  {18, 2, 0}, {10, 7, 2}, {27, 2, 0}, {8, 2, 0},  {13, 5, 1},
    {12, 7, 2}, {9, 7, 2},  {7, 5, 3},  {15, 5, 1}, {14, 7, 2},
};

// The value that the field got in the full records, as it stands in a file.
std::string valueOf(const Row& row, TagTable table) {
  constexpr size_t sizes[] = {0, 0, 1, 2, 4, 8, 0, 1, 0, 0, 8};
  if (row.tag == 37500) return makerNote;
  if (row.tag == 37510) return std::string("ASCII\0\0\0", 8) + userComment;
  if (row.tag == 5 && row.type == 7) return pattern(5, 1) + '\0';
  if (row.type == 2)
    return pattern(row.tag, textLength(*findTag(table, static_cast<uint16_t>(row.tag)))) + '\0';
  return pattern(row.tag, sizes[row.type] * row.count);
}

// What a save gives another value: the time and the positions.
bool isRenewed(unsigned tag) {
  return tag == 306 || tag == 34665 || tag == 34853 || tag == 40965 || tag == 513 || tag == 514;
}

void expectRows(const Directory& directory, std::vector<Row> rows, TagTable table,
                const std::vector<Row>& pointers = {}) {
  rows.insert(rows.end(), pointers.begin(), pointers.end());
  ASSERT_EQ(directory.entries.size(), rows.size());
  for (size_t i = 0; i < rows.size(); ++i) {
    const Entry& entry = directory.entries[i];
    const std::string value = isRenewed(entry.tag) ? entry.data : valueOf(rows[i], table);
    const unsigned count = rows[i].count ? rows[i].count : static_cast<unsigned>(value.size());
    EXPECT_EQ(entry.tag, rows[i].tag);
    EXPECT_EQ(entry.type, rows[i].type) << "tag " << entry.tag;
    EXPECT_EQ(entry.count, count) << "tag " << entry.tag;
    EXPECT_EQ(entry.data, value) << "tag " << entry.tag;
  }
}

TEST_F(SegmentTest, HoldsEveryFieldInItsPlaceAndForm) {
  const Segment segment = parseSegment(fromRecords(fullRecords()));
  EXPECT_EQ(segment.primary.entries.size(), 21u);
  EXPECT_EQ(segment.exif.entries.size(), 53u);
  ASSERT_TRUE(segment.gps && segment.thumbnail && segment.interoperability);
  EXPECT_EQ(segment.gps->entries.size(), 29u);
  expectRows(segment.primary, imageRows, imageTags, primaryPointers);
  expectRows(segment.exif, exifRows, exifTags);
  expectRows(*segment.gps, gpsRows, gpsTags);
  expectRows(*segment.thumbnail, imageRows, imageTags, thumbnailPointers);
}

TEST_F(SegmentTest, WritesAsManySubjectAreaValuesAsThereAre) {
  ExifMetadata metadata = {};
  metadata.exif.hasSubjectArea = 1;
  const uint16_t areas[][4] = {{9, 8, 0, 0}, {9, 8, 7, 0}, {9, 8, 7, 6}, {9, 8, 0, 6}};
  const unsigned counts[] = {2, 3, 4, 4};
  for (size_t i = 0; i < std::size(areas); ++i) {
    std::memcpy(metadata.exif.subjectArea, areas[i], sizeof areas[i]);
    const Segment segment = parseSegment(fromRecords(metadata));
    EXPECT_EQ(segment.exif.entries[0].count, counts[i]);
    EXPECT_EQ(segment.exif.entries[0].data,
              std::string(reinterpret_cast<const char*>(areas[i]), counts[i] * 2));
  }
}

TEST_F(SegmentTest, LeavesDirectoriesOutWithTheirRecords) {
  ExifMetadata metadata = fullRecords();
  metadata.exif.isR98Interoperability = 0;
  const auto build = [&](const ImageIfdRecord* thumbnail, const GpsIfdRecord* gps) {
    return bytesOf(buildSegmentFromRecords(*reader_.codec, picture_, nullptr, &metadata.exif,
                                           &metadata.primary, thumbnail, gps));
  };
  const Segment bare = parseSegment(build(nullptr, nullptr));
  EXPECT_FALSE(bare.interoperability || bare.gps || bare.thumbnail);
  EXPECT_EQ(bare.primary.find(34853)->data, std::string(4, '\0'));
  EXPECT_FALSE(std::filesystem::exists(temporaryThumbnail()));
  const GpsIfdRecord unread = {};
  EXPECT_EQ(parseSegment(build(nullptr, &unread)).gps->entries.size(), 0u);
  EXPECT_FALSE(buildSegmentFromRecords(*reader_.codec, picture_, nullptr, nullptr,
                                       &metadata.primary, nullptr, nullptr));
  EXPECT_FALSE(buildSegmentFromRecords(*reader_.codec, picture_, nullptr, &metadata.exif, nullptr,
                                       nullptr, nullptr));
}

template <class Random>
void setFlags(TagTable table, void* record, Random& random) {
  for (const TagRow& row : table) {
    const uint32_t flag = random() % 2;
    if (row.flag != noField) std::memcpy(static_cast<char*>(record) + row.flag, &flag, sizeof flag);
  }
}

TEST_F(SegmentTest, CountsItsEntriesAsThePresenceCountersDo) {
  picture_ = picture(8, 6);
  std::mt19937 random(20020401);
  for (int i = 0; i < 300; ++i) {
    ExifMetadata m = fullRecords();
    setFlags(imageTags, &m.primary, random);
    setFlags(imageTags, &m.thumbnail, random);
    setFlags(exifTags, &m.exif, random);
    setFlags(gpsTags, &m.gps, random);
    m.exif.isR98Interoperability = random() % 2;
    const auto imageEntries = [](const ImageIfdRecord& image) {
      return countPresentImageFields(image) - image.hasSamplesPerPixel -
             image.hasPlanarConfiguration - image.hasPhotometricInterpretation +
             !image.hasXResolution + !image.hasYResolution;
    };
    const Segment segment = parseSegment(fromRecords(m));
    EXPECT_EQ(segment.primary.entries.size(), imageEntries(m.primary) + !m.primary.hasDateTime);
    EXPECT_EQ(segment.exif.entries.size(),
              countPresentExifFields(m.exif) + m.exif.isR98Interoperability);
    EXPECT_EQ(segment.gps.has_value(), m.primary.hasGpsIfdPointer == 1);
    EXPECT_EQ(segment.gps ? segment.gps->entries.size() : 0,
              m.primary.hasGpsIfdPointer * countPresentGpsFields(m.gps));
    EXPECT_EQ(segment.thumbnail->entries.size(), imageEntries(m.thumbnail) -
                                                     m.thumbnail.hasExifIfdPointer -
                                                     m.thumbnail.hasGpsIfdPointer + 2);

    // The fields that a caller may set where all else is default.
    ExifMetadata given = fullRecords();
    given.exif = m.exif;
    for (const TagRow& row : exifTags) {
      const bool isAllowed = row.tag == 33434 || row.tag == 33437 || row.tag == 36867 ||
                             row.tag == 36868 || (row.tag >= 37122 && row.tag <= 37386) ||
                             row.tag == 37500 || row.tag == 37510 || row.tag == 40964 ||
                             row.tag == 41492 || row.tag == 41728;
      if (!isAllowed && row.flag != noField)
        std::memset(reinterpret_cast<char*>(&given.exif) + row.flag, 0, sizeof(uint32_t));
    }
    const Segment defaults = parseSegment(withDefaults(given));
    EXPECT_EQ(defaults.exif.entries.size(), countPresentExifFields(given.exif) + 7 +
                                                !given.exif.hasDateTimeOriginal +
                                                !given.exif.hasDateTimeDigitized);
  }
}

TEST_F(SegmentTest, FillsTheBlockToItsLastByteAndNoFurther) {
  ExifMetadata metadata = {};
  metadata.exif.hasMakerNote = 1;
  const std::string note(60000, 'n');
  metadata.exif.makerNote = reinterpret_cast<const uint8_t*>(note.data());
  metadata.exif.makerNoteLength = 60000;
  const size_t free = 65536 - (fromRecords(metadata).size() - 4);
  // The file's whole size counts, although its APP0 is not embedded.
  std::string thumbnail = smallThumbnail;
  thumbnail.insert(8, free - thumbnail.size(), 't');
  codecFiles.thumbnail = thumbnail;
  EXPECT_EQ(parseSegment(fromRecords(metadata)).thumbnailJpeg.size(), free - 6);
  thumbnail.erase(2, 6);
  codecFiles.thumbnail = thumbnail.insert(2, 6, 't');
  EXPECT_EQ(fromRecords(metadata).size(), 65536u);

  PRaster image = picture(16, 16);
  EXPECT_TRUE(
      saveJpegWithRecords(reader_, path("full.jpg").c_str(), true, &image, nullptr, metadata));
  codecFiles.thumbnail = thumbnail + 't';
  EXPECT_FALSE(
      saveJpegWithRecords(reader_, path("over.jpg").c_str(), true, &image, nullptr, metadata));
  EXPECT_FALSE(exists("over.jpg"));
  EXPECT_FALSE(std::filesystem::exists(temporaryThumbnail()));
}

TEST_F(SegmentTest, LeavesOutWhatOverflowsTheBlock) {
  const std::string large(70000, 'x');
  const struct {
    uint32_t note, comment, entries;
  } cases[] = {{7, 5, 53},         {65000, 5, 52}, {0xFFFFFFFF, 5, 52},
               {40000, 40000, 52}, {7, 70000, 51}, {70000, 0xFFFFFFFF, 51}};
  for (const auto& [note, comment, entries] : cases) {
    ExifMetadata metadata = fullRecords();
    metadata.exif.makerNote = metadata.exif.userComment =
        reinterpret_cast<const uint8_t*>(large.data());
    metadata.exif.makerNoteLength = note;
    metadata.exif.userCommentLength = comment;
    const Segment segment = parseSegment(fromRecords(metadata));
    EXPECT_EQ(segment.exif.entries.size(), entries) << note << ' ' << comment;
    EXPECT_EQ(segment.exif.find(37500) != nullptr, entries == 53);
    EXPECT_EQ(segment.exif.find(37510) != nullptr, entries >= 52);
  }
}

}  // namespace
}  // namespace exifkeep::test

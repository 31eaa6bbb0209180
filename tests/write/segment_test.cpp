// Exif segments as bytes: whole ones written out, entry counts against the presence counters, and
// the limit of the block.
#include <gmock/gmock.h>

#include <cstring>
#include <ctime>
#include <random>

#include "write/jpeg_segment.h"
#include "write/save_fixture.h"
#include "write/save_jpeg.h"

namespace exifkeep::test {
namespace {

// Bytes from hexadecimal text; what stands behind a '#' is a comment. "T" is a time without its
// terminator.
std::string fromHex(const char* hex) {
  std::string bytes;
  for (const char* at = hex; *at; ++at) {
    if (*at == '#') at += std::strcspn(at, "\n");
    if (*at == 'T') bytes.append(19, 'T');
    if (std::strchr(" \nT", *at)) continue;
    bytes += static_cast<char>(std::stoi(std::string(at, 2), nullptr, 16));
    ++at;
  }
  return bytes;
}

std::string bytesOf(const GlobalBlock& block) {
  const BlockLock lock(block);
  if (!lock.bytes()) return {};
  return {reinterpret_cast<const char*>(lock.bytes()), segmentSize(lock.bytes())};
}

// As small as a JPEG file gets, with an APP0 that is not embedded.
const std::string smallThumbnail = fromHex("ffd8 ffe0 0004 0102 ffd9");

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
  const std::string expected = fromHex(R"(
    ffe1 00c6 457869660000 49492a00 08000000
    0400                          # IFD0
    1a01 0500 01000000 3e000000   1b01 0500 01000000 46000000
    3201 0200 14000000 4e000000   6987 0400 01000000 62000000  # Exif directory at 98
    74000000                      # IFD1 at 116
    48000000 01000000 96000000 01000000  T00
    0100 0090 0700 04000000 30323230 00000000
    0400                          # IFD1; thumbnail at 186, 4 bytes long
    1a01 0500 01000000 aa000000   1b01 0500 01000000 b2000000
    0102 0400 01000000 ba000000   0202 0400 01000000 04000000
    00000000 48000000 01000000 96000000 01000000 ffd8 ffd9)");
  const std::string written = fromRecords(metadata);
  EXPECT_EQ(withoutTimes(written, parseSegment(written)), expected);
}

std::string nowText() {
  const std::time_t now = std::time(nullptr);
  char text[20];
  std::strftime(text, sizeof text, "%Y:%m:%d %H:%M:%S", std::localtime(&now));
  return text;
}

TEST_F(SegmentTest, OfDefaultsAndASound) {
  ExifMetadata metadata = {};
  metadata.exif.hasRelatedSoundFile = 1;
  std::memcpy(metadata.exif.relatedSoundFile, "DSC00001.WAV", 12);
  const std::string expected = fromHex(R"(
    ffe1 023a 457869660000 49492a00 08000000
    0b00                          # IFD0; Exif directory at 242
    0e01 0200 0e000000 92000000   0f01 0200 08000000 a0000000   1001 0200 08000000 a8000000
    1201 0300 01000000 01000000   1a01 0500 01000000 b0000000   1b01 0500 01000000 b8000000
    2801 0300 01000000 02000000   3201 0200 14000000 c0000000   1302 0300 01000000 02000000
    9882 0200 1d000000 d4000000   6987 0400 01000000 f2000000
    c4010000                      # IFD1 at 452
    457869665f4a5045475f34323200  4f7276616c6c6500  546573736c617200
    48000000 01000000 96000000 01000000  T00
    436f70797269676874202863292062792074686520617574686f722e0000
    0a00                          # Exif directory; interoperability directory at 422
    0090 0700 04000000 30323130   0390 0200 14000000 70010000   0490 0200 14000000 84010000
    0191 0700 04000000 01020300   00a0 0700 04000000 30313030   01a0 0300 01000000 01000000
    02a0 0400 01000000 80020000   03a0 0400 01000000 e0010000   04a0 0200 0d000000 98010000
    05a0 0400 01000000 a6010000   00000000  T00 T00  44534330303030312e5741560000
    0200 0100 0200 04000000 52393800 0200 0700 04000000 30313030 00000000
    0700                          # IFD1; thumbnail at 558
    0301 0300 01000000 06000000   1a01 0500 01000000 1e020000   1b01 0500 01000000 26020000
    2801 0300 01000000 02000000   0102 0400 01000000 2e020000   0202 0400 01000000 04000000
    1302 0300 01000000 02000000
    00000000 48000000 01000000 48000000 01000000 ffd8 ffd9)");
  const std::string before = nowText(), written = withDefaults(metadata), after = nowText();
  const Segment parsed = parseSegment(written);
  EXPECT_EQ(withoutTimes(written, parsed), expected);
  const std::string time = parsed.primary.find(306)->data.c_str();
  EXPECT_TRUE(before <= time && time <= after) << before << ' ' << time << ' ' << after;

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
  EXPECT_EQ(named.thumbnail->find(282)->data, fromHex("00000000 01000000"));
  EXPECT_EQ(named.thumbnail->find(283)->data, fromHex("2c010000 01000000"));
}

// Order, type, count and value of every entry. Files of this library have always looked so: a
// change of a fingerprint is a change of every file that is saved.
TEST_F(SegmentTest, OfFullRecords) {
  const std::string copied = fromRecords(fullRecords()), made = withDefaults(fullRecords());
  const Segment segment = parseSegment(copied), defaults = parseSegment(made);
  ASSERT_TRUE(segment.gps && segment.thumbnail && segment.interoperability);
  const size_t counts[] = {segment.primary.entries.size(), segment.exif.entries.size(),
                           segment.gps->entries.size(), segment.thumbnail->entries.size(),
                           defaults.exif.entries.size()};
  EXPECT_THAT(counts, testing::ElementsAre(21, 53, 29, 21, 27));
  EXPECT_EQ(fingerprint(copied, segment.primary.find(306)->data.substr(0, 19)), 1122873200u);
  EXPECT_EQ(fingerprint(made, defaults.primary.find(306)->data.substr(0, 19)), 1910981249u);
}

TEST_F(SegmentTest, LeavesDirectoriesOutWithTheirRecords) {
  const ExifMetadata metadata = fullRecords();
  const auto build = [&](const ExifIfdRecord* exif, const ImageIfdRecord* primary) {
    return bytesOf(buildSegmentFromRecords(*reader_.codec, picture_, nullptr, exif, primary,
                                           nullptr, nullptr));
  };
  const Segment bare = parseSegment(build(&metadata.exif, &metadata.primary));
  EXPECT_FALSE(bare.gps || bare.thumbnail);
  EXPECT_EQ(bare.primary.find(34853)->data, std::string(4, '\0'));
  EXPECT_EQ(build(nullptr, &metadata.primary) + build(&metadata.exif, nullptr), "");
}

TEST_F(SegmentTest, CountsItsEntriesAsThePresenceCountersDo) {
  picture_ = picture(8, 6);
  std::mt19937 random(20020401);
  const auto setFlags = [&](TagTable table, void* record) {
    for (const TagRow& row : table) {
      const uint32_t flag = random() % 2;
      if (row.flag != noField)
        std::memcpy(static_cast<char*>(record) + row.flag, &flag, sizeof flag);
    }
  };
  const auto imageEntries = [](const ImageIfdRecord& image) {
    return countPresentImageFields(image) - image.hasSamplesPerPixel -
           image.hasPlanarConfiguration - image.hasPhotometricInterpretation +
           !image.hasXResolution + !image.hasYResolution;
  };
  for (int i = 0; i < 200; ++i) {
    ExifMetadata m = fullRecords();
    setFlags(imageTags, &m.primary);
    setFlags(imageTags, &m.thumbnail);
    setFlags(exifTags, &m.exif);
    setFlags(gpsTags, &m.gps);
    m.exif.isR98Interoperability = random() % 2;
    const Segment segment = parseSegment(fromRecords(m));
    EXPECT_EQ(segment.primary.entries.size(), imageEntries(m.primary) + !m.primary.hasDateTime);
    EXPECT_EQ(segment.exif.entries.size(),
              countPresentExifFields(m.exif) + m.exif.isR98Interoperability);
    EXPECT_EQ(segment.gps.has_value(), m.primary.hasGpsIfdPointer == 1);
    EXPECT_EQ(segment.gps ? segment.gps->entries.size() : 0,
              m.primary.hasGpsIfdPointer * countPresentGpsFields(m.gps));
    EXPECT_EQ(segment.thumbnail->entries.size() + m.thumbnail.hasExifIfdPointer +
                  m.thumbnail.hasGpsIfdPointer,
              imageEntries(m.thumbnail) + 2);
    parseSegment(withDefaults(m));
  }
}

TEST_F(SegmentTest, FillsTheBlockToItsLastByteAndNoFurther) {
  ExifMetadata metadata = {};
  metadata.exif.hasMakerNote = 1;
  const std::vector<uint8_t> note(60000, 'n');
  metadata.exif.makerNote = note.data();
  metadata.exif.makerNoteLength = 60000;
  const size_t free = 65536 - (fromRecords(metadata).size() - 4);
  // The file's whole size counts, although its APP0 is not embedded.
  std::string thumbnail = smallThumbnail;
  thumbnail.insert(8, free - thumbnail.size(), 't');
  codecFiles.thumbnail = thumbnail;
  EXPECT_EQ(parseSegment(fromRecords(metadata)).thumbnailJpeg.size(), free - 6);
  codecFiles.thumbnail = thumbnail.replace(2, 6, 6, 't');
  EXPECT_EQ(fromRecords(metadata).size(), 65536u);

  for (const bool fits : {true, false}) {
    if (!fits) codecFiles.thumbnail = thumbnail + 't';
    const std::string to = fits ? "full.jpg" : "over.jpg";
    EXPECT_EQ(saveJpegWithRecords(reader_, path(to).c_str(), true, &picture_, nullptr, metadata),
              fits);
    EXPECT_EQ(exists(to), fits);
  }
  EXPECT_FALSE(std::filesystem::exists(temporaryThumbnail()));
}

TEST_F(SegmentTest, LeavesOutWhatOverflowsTheBlock) {
  const std::vector<uint8_t> large(70000, 'x');
  const struct {
    uint32_t note, comment, entries;
  } cases[] = {{7, 5, 53},         {65000, 5, 52}, {0xFFFFFFFF, 5, 52},
               {40000, 40000, 52}, {7, 70000, 51}, {70000, 0xFFFFFFFF, 51}};
  for (const auto& [note, comment, entries] : cases) {
    ExifMetadata metadata = fullRecords();
    metadata.exif.makerNote = metadata.exif.userComment = large.data();
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

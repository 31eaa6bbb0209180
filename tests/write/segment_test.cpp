// Exif segments as bytes: a whole one, and the limit of the block.
#include <cstring>
#include <ctime>

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
    return bytesOf(buildSegmentFromRecords(*reader_.codec, picture_, nullptr, metadata));
  }
  std::string withDefaults(const ExifMetadata& metadata, PRaster* hostThumbnail = nullptr) {
    return bytesOf(buildSegmentWithDefaults(*reader_.codec, picture_, hostThumbnail, metadata.exif,
                                            metadata.primary));
  }

  ExifMetadata readBack(const std::string& segment) {
    write("a.jpg", "\xFF\xD8" + segment);
    return recordsOf("a.jpg");
  }

  PRaster picture_ = picture(640, 480);
};

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
  EXPECT_EQ(withoutTimes(written), expected);
  const std::string time = written.substr(10 + 192, 19);
  EXPECT_TRUE(before <= time && time <= after) << before << ' ' << time << ' ' << after;
  for (const size_t at : {368, 388}) EXPECT_EQ(written.substr(10 + at, 19), time);

  metadata.primary.hasSoftware = 1;
  std::memcpy(metadata.primary.software, "Test", 4);
  PRaster hostThumbnail = picture(8, 8);
  hostThumbnail.setResolution(0, 11811);
  const ExifMetadata named = readBack(withDefaults(metadata, &hostThumbnail));
  EXPECT_STREQ(named.primary.software, "Test");
  EXPECT_EQ(named.thumbnail.xResolution.numerator, 0u);
  EXPECT_EQ(named.thumbnail.yResolution.numerator, 300u);
}

TEST_F(SegmentTest, WithoutItsPointerThereIsNoGpsDirectory) {
  ExifMetadata metadata = fullRecords();
  metadata.primary.hasGpsIfdPointer = 0;
  const size_t size = fromRecords(metadata).size();
  metadata.gps = {};
  EXPECT_EQ(fromRecords(metadata).size(), size);
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
  EXPECT_EQ(fromRecords(metadata).size(), 65536u - 6);
  codecFiles.thumbnail = thumbnail.replace(2, 6, 6, 't');
  EXPECT_EQ(fromRecords(metadata).size(), 65536u);

  for (const bool fits : {true, false}) {
    if (!fits) codecFiles.thumbnail = thumbnail + 't';
    const std::string to = fits ? "full.jpg" : "over.jpg";
    EXPECT_EQ(saveJpegWithRecords(reader_, path(to).c_str(), &picture_, nullptr, metadata), fits);
    EXPECT_EQ(exists(to), fits);
  }
}

TEST_F(SegmentTest, LeavesOutWhatOverflowsTheBlock) {
  const std::vector<uint8_t> large(70000, 'x');
  const struct {
    uint32_t note, comment;
    bool keepsNote, keepsComment;
  } cases[] = {{7, 5, true, true},           {65000, 5, false, true},
               {0xFFFFFFFF, 5, false, true}, {40000, 40000, false, true},
               {14, 70000, true, false},     {4096, 62000, true, false},
               {4097, 62000, false, true},   {70000, 0xFFFFFFFF, false, false}};
  for (const auto& [note, comment, keepsNote, keepsComment] : cases) {
    ExifMetadata metadata = fullRecords();
    metadata.exif.makerNote = metadata.exif.userComment = large.data();
    metadata.exif.makerNoteLength = note;
    metadata.exif.userCommentLength = comment;
    const ExifMetadata kept = readBack(fromRecords(metadata));
    EXPECT_EQ(kept.exif.hasMakerNote, keepsNote) << note << ' ' << comment;
    EXPECT_EQ(kept.exif.hasUserComment, keepsComment) << note << ' ' << comment;
  }
}

}  // namespace
}  // namespace exifkeep::test

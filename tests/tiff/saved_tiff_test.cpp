// SPDX-License-Identifier: MIT
#include <exifkeep/exifkeep.h>
#include <gmock/gmock.h>

#include <cstring>
#include <sstream>

#include "probe/tags.h"
#include "tiff/codec_tiff.h"
#include "tiff/save_tiff.h"
#include "tiff/tiff_block.h"
#include "tiff_builder.h"
#include "write/save_fixture.h"

namespace exifkeep::test {
namespace {

// Begins with minimal records for an Exif file and a picture with 300 dots per inch.
class FrontPartTest : public ScratchTest {
 protected:
  FrontPartTest() {
    picture.setResolution(11811, 11811);
    reader.thumbnailIfdOffset = 0;
    std::memcpy(metadata.exif.exifVersion, "0220", 4);
    metadata.exif.hasExifVersion = metadata.primary.hasExifIfdPointer = 1;
    metadata.primary.samplesPerPixel = 3;
  }
  std::string build() {
    const FrontPart part = buildTiffBlockFromRecords(reader, picture, nullptr, metadata);
    const BlockLock lock(part.block);
    return lock.bytes() ? std::string(lock.bytes(), lock.bytes() + part.size) : std::string();
  }

  ExifReader reader;
  PRaster picture = patterned(24, 40, 30);
  ExifMetadata metadata = {};
};

// Front part and thumbnail must fit into 65536 bytes, or the save fails. If the directories alone
// do not fit, the maker note is dropped. One that begins with a zero byte takes no space.
TEST_F(FrontPartTest, MakerNotes) {
  constexpr int32_t notLookedFor = -1;
  // Length and first byte of the note, IFD1, size of the front part (0: none), length read back.
  const std::tuple<size_t, uint8_t, int32_t, size_t, size_t> cases[] = {
      {7666, 1, notLookedFor, 65536, 7666},
      {7667, 1, 700, 0, 0},
      {65360, 1, 0, 65536, 65360},
      {65361, 1, 0, 164, 0},
      {3, 0, 0, 176, 2},
      {70000, 0, 700, 57870, 2},
      {0, 0, 0, 176, 0},
  };
  for (const auto& [length, first, thumbnailIfd, size, lengthRead] : cases) {
    SCOPED_TRACE(length);
    const std::vector<uint8_t> note(length, first);
    metadata.exif.makerNote = note.data();
    metadata.exif.makerNoteLength = static_cast<uint32_t>(length);
    metadata.exif.hasMakerNote = 1;
    reader.thumbnailIfdOffset = thumbnailIfd;
    EXPECT_EQ(build().size(), size);
    std::filesystem::remove(path("a.tif"));
    EXPECT_EQ(saveExifTiff(reader, path("a.tif").c_str(), &picture, nullptr, metadata), size > 0);
    EXPECT_EQ(std::filesystem::exists(path("a.tif")), size > 0);
    const Reading saved(path("a.tif"));
    EXPECT_EQ(saved.succeeded, size > 0);
    EXPECT_EQ(saved.exif.makerNoteLength, lengthRead);
  }
}

using SavedFileTest = ScratchTest;

bool showsPixels(const std::string& path, PRaster& image) {
  std::optional<PRaster> shown = load(path);
  return shown && largestDifference(*shown, image) == 0;
}

// Fields of the source that a saved file must have again.
std::string summaryOf(const std::string& path) {
  const Reading all(path);
  std::ostringstream text;
  text << all.primary.make << ' ' << all.primary.imageWidth << ' ' << all.primary.imageLength << ' '
       << all.primary.orientation << ' ' << all.primary.xResolution.numerator << ' '
       << all.exif.dateTimeOriginal << ' ' << all.exif.exposureTime.denominator << ' '
       << std::string(all.exif.makerNote, all.exif.makerNote + all.exif.makerNoteLength) << ' '
       << all.gps.gpsLatitudeRef << ' ' << all.gps.gpsLatitude[2].numerator;
  return text.str();
}

// The records of a picture of 48 x 32 pixels that is stored in another way.
Picture sourceOf(std::vector<Entry> storage, bool hasThumbnail) {
  storage.insert(storage.end(), {shorts(0x0100, {48}), shorts(0x0101, {32}), shorts(0x0112, {6}),
                                 text(0x010F, "A camera maker"), rationals(0x011A, {300, 1}),
                                 exifPointer(), gpsPointer()});
  Picture source = {.image = storage,
                    .exif = {bytes(0x9000, "0220"), text(0x9003, "2004:07:01 12:00:00"),
                             rationals(0x829A, {1, 2}), bytes(0x927C, "a note")},
                    .gps = {bytes(1, "N"), rationals(2, {48, 1, 12, 1, 30, 1})}};
  if (hasThumbnail)
    source.thumbnail = {shorts(0x0100, {80}), shorts(0x0101, {60}), shorts(0x0102, {8}),
                        shorts(0x0106, {1}),  shorts(0x0115, {1}),  shorts(0x0103, {1})};
  return source;
}

// Other libraries must be able to open the saved file, so nothing specific to the source may be
// left.
TEST_F(SavedFileTest, EveryKindOfSource) {
  const Entry rgb = shorts(0x0106, {2}), grey = shorts(0x0106, {1}), cmyk = shorts(0x0106, {5});
  const Entry colours = shorts(0x0102, {8, 8, 8}), three = shorts(0x0115, {3});
  const struct {
    const char* name;
    std::vector<Entry> storage;
    Order order = Order::ii;
    bool hasThumbnail = true;
  } kinds[] = {
      {"plain", {rgb, colours, three, shorts(0x0103, {1})}},
      {"LZW, planar", {rgb, colours, three, shorts(0x0103, {5}), shorts(0x011C, {2})}},
      {"16 bits, big-endian", {rgb, shorts(0x0102, {16, 16, 16}), three}, Order::mm},
      {"fax", {grey, shorts(0x0102, {1}), shorts(0x0115, {1}), shorts(0x0103, {4})}},
      {"CMYK", {cmyk, shorts(0x0102, {8, 8, 8, 8}), shorts(0x0115, {4})}},
      {"no samples", {rgb}},
      {"samples of no size", {rgb, three}},
      {"no thumbnail", {rgb, colours, three, shorts(0x0103, {1})}, Order::ii, false},
  };
  PRaster image = patterned(24, 48, 32);
  for (const auto& [name, storage, order, hasThumbnail] : kinds) {
    SCOPED_TRACE(name);
    writeFile(path("a.tif"), tiffBytes(sourceOf(storage, hasThumbnail), order));
    const std::string source = summaryOf(path("a.tif"));
    EXPECT_EQ(source, "A camera maker 48 32 6 300 2004:07:01 12:00:00 2 a note N 30");
    PRaster host = patterned(24, 20, 10), thumbnail;
    for (PRaster* given : {static_cast<PRaster*>(nullptr), &host}) {
      ASSERT_EQ(SaveFile(path("a.tif").c_str(), path("b.TIFF").c_str(), &image, given), 1);
      EXPECT_TRUE(showsPixels(path("b.TIFF"), image));
      ASSERT_EQ(OpenExifFile(path("b.TIFF").c_str(), nullptr, &thumbnail), 1);
      EXPECT_EQ(thumbnail.width(), !hasThumbnail ? 0u : given ? 20u : 160u);
    }
    EXPECT_TRUE(thumbnail.IsEmpty() || largestDifference(thumbnail, host) == 0);
    EXPECT_EQ(summaryOf(path("b.TIFF")), source);
  }
}

// The probe looks at the content, the writers at the name.
TEST_F(SavedFileTest, JpegNamedTiff) {
  writeFile(path("a.tif"), exifJpeg("A camera maker"));
  PRaster image = patterned(24, 40, 30);
  ASSERT_EQ(SaveFile(path("a.tif").c_str(), path("b.tif").c_str(), &image, nullptr), 1);
  EXPECT_TRUE(showsPixels(path("b.tif"), image));
  EXPECT_THAT(summaryOf(path("b.tif")), testing::StartsWith("A camera maker 40 30 "));

  // It has more rows than a SHORT can hold.
  PRaster tall = patterned(24, 1, 66000);
  ASSERT_EQ(SaveFile(path("a.tif").c_str(), path("tall.tif").c_str(), &tall, nullptr), 1);
  EXPECT_TRUE(showsPixels(path("tall.tif"), tall));
}

TEST_F(SavedFileTest, TakesOnlyACompleteStrip) {
  constexpr uint32_t front = 8 + 2 + 24 + 4;  // and 6 bytes of pixels
  const auto file = [](uint32_t offset, Order order = Order::ii) {
    const Entry other = longs(tag::stripOffsets, {9});
    return tiffBytes({.image = {other, longs(tag::stripOffsets, {offset})}}, order) + "RGBRGB";
  };
  std::string elsewhere = file(front), negative = file(front);
  elsewhere[4] = 9;
  negative[9] = '\x80';
  const std::tuple<std::string, std::string, uint32_t, bool> cases[] = {
      {"the last entry counts", file(front), front, true},
      {"big-endian", file(front, Order::mm), front, true},
      {"directory elsewhere", elsewhere, front, false},
      {"cut short", file(front + 1), front + 1, false},
      {"not at the end", file(front) + "R", front, false},
      {"far outside", file(0xFFFFFFFF), 0xFFFFFFFF, false},
      {"over the header", file(8), 8, false},
      {"a negative number of entries", negative, 0, false}};
  for (const auto& [name, bytes, offset, isWhole] : cases) {
    SCOPED_TRACE(name);
    writeFile(path("codec.tif"), bytes);
    ExifFile opened(path("codec.tif").c_str());
    EXPECT_EQ(findStripOffset(opened), offset);
    codecFiles.picture = bytes;
    ExifReader reader;
    reader.thumbnailIfdOffset = 0;
    ExifMetadata metadata = {};
    PRaster picture = patterned(24, 2, 1);
    EXPECT_EQ(saveExifTiff(reader, path("a.tif").c_str(), &picture, nullptr, metadata), isWhole);
    codecFiles = {};
    EXPECT_EQ(std::filesystem::remove(path("a.tif")), isWhole);
  }
}

// A strip larger than the piece that is written at once. After it comes what the codec's file has
// beyond the end of the new file.
TEST_F(SavedFileTest, MovesTheWholeStrip) {
  PRaster picture = patterned(24, 1500, 1000);
  ASSERT_EQ(save(path("plain.tif"), picture), 1);
  const std::string plain = readFile(path("plain.tif"));
  ASSERT_EQ(SaveFile("", path("a.tif").c_str(), &picture, nullptr), 1);
  EXPECT_TRUE(readFile(path("a.tif")) == plain);
  constexpr size_t size = 1500 * 1000 * 3;
  for (const int32_t thumbnailIfd : {0, 700}) {
    ExifReader reader;
    reader.thumbnailIfdOffset = thumbnailIfd;
    ExifMetadata metadata = {};
    ASSERT_TRUE(saveExifTiff(reader, path("a.tif").c_str(), &picture, nullptr, metadata));
    ExifFile file(path("a.tif").c_str());
    const std::string saved = readFile(path("a.tif"));
    const uint32_t front = findStripOffset(file);
    EXPECT_TRUE(saved.substr(front, size) == plain.substr(plain.size() - size));
    const size_t end = front + size;
    EXPECT_TRUE(saved.substr(end) == plain.substr(std::min(end, plain.size())));
  }
}

}  // namespace
}  // namespace exifkeep::test

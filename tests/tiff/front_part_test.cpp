// The front part of a saved TIFF file: its bytes, its limits, and what of the records it carries.
#include <cstring>

#include "tiff/save_tiff.h"
#include "tiff/tiff_block.h"
#include "tiff/tiff_pictures.h"
#include "tiff/true_records.h"
#include "write/save_fixture.h"

namespace exifkeep::test {
namespace {

// "tag type count value" of each entry, and the link to the next directory.
std::string directoryAt(const Bytes& file, size_t at) {
  std::string text;
  const auto take = [&](int size) {
    uint32_t value = 0;
    for (int i = 0; i < size; ++i) value |= uint32_t{file.at(at++)} << 8 * i;
    return value;
  };
  for (uint32_t left = take(2); left > 0; --left) {
    for (int size : {2, 2, 4, 4}) text += std::to_string(take(size)) + ' ';
    text.back() = '\n';
  }
  return text + "next " + std::to_string(take(4)) + '\n';
}

// Begins with the smallest records that make an Exif file, and a picture at 300 dots per inch.
class FrontPartTest : public CodecTest {
 protected:
  FrontPartTest() {
    picture.setResolution(11811, 11811);
    reader.thumbnailIfdOffset = 0;
    std::memcpy(metadata.exif.exifVersion, "0220", 4);
    metadata.exif.hasExifVersion = metadata.primary.hasExifIfdPointer = 1;
    metadata.primary.samplesPerPixel = 3;
  }
  Bytes build(bool isNew = false) {
    const FrontPart part =
        isNew ? buildNewTiffBlock(reader, picture, nullptr, metadata.exif, metadata.primary)
              : buildTiffBlockFromRecords(reader, picture, nullptr, &metadata.exif,
                                          &metadata.primary, &metadata.thumbnail, &metadata.gps);
    const BlockLock lock(part.block);
    return lock.bytes() ? Bytes(lock.bytes(), lock.bytes() + part.size) : Bytes();
  }
  void setMakerNote(const std::vector<uint8_t>& note) {
    metadata.exif.makerNote = note.data();
    metadata.exif.makerNoteLength = static_cast<uint32_t>(note.size());
    metadata.exif.hasMakerNote = 1;
  }

  ExifReader reader;
  PRaster picture = patterned(24, 40, 30);
  ExifMetadata metadata = {};
};

TEST_F(FrontPartTest, SmallestRecords) {
  const std::string exif = "36864 7 4 808596016\nnext 0\n";
  const std::string primary =
      "262 3 1 2\n282 5 1 110\n283 5 1 118\n306 2 20 126\n273 4 1 %\n279 4 1 3600\n278 3 1 30\n"
      "34665 4 1 146\nnext ";
  Bytes block = build();
  ASSERT_EQ(block.size(), 164u);
  EXPECT_EQ(Bytes(&block[0], &block[8]), (Bytes{'I', 'I', 42, 0, 8, 0, 0, 0}));
  EXPECT_EQ(Bytes(&block[110], &block[118]), (Bytes{0x2C, 1, 0, 0, 1, 0, 0, 0}));
  EXPECT_EQ(directoryAt(block, 8),
            std::string(primary).replace(primary.find('%'), 1, "164") + "0\n");
  EXPECT_EQ(directoryAt(block, 146), exif);

  reader.thumbnailIfdOffset = -1;
  block = build();
  ASSERT_EQ(block.size(), 57858u);
  EXPECT_EQ(directoryAt(block, 8),
            std::string(primary).replace(primary.find('%'), 1, "57858") + "164\n");
  EXPECT_EQ(directoryAt(block, 164),
            "282 5 1 242\n283 5 1 250\n262 3 1 2\n273 4 1 258\n279 4 1 57600\n278 3 1 120\n"
            "next 0\n");
}

TEST_F(FrontPartTest, DefaultFields) {
  ExifMetadata records = {};
  std::strcpy(records.primary.software, "Test");
  std::strcpy(records.exif.relatedSoundFile, "DSC00123.wav");
  records.exif.hasRelatedSoundFile = 1;
  ASSERT_TRUE(saveNewExifTiff(reader, path("a.tif").c_str(), &picture, nullptr, records.exif,
                              records.primary));
  const Bytes file = bytesOf(path("a.tif"));
  EXPECT_EQ(directoryAt(file, 8),
            "271 2 8 278\n262 3 1 2\n272 2 8 286\n270 2 9 294\n33432 2 29 304\n282 5 1 334\n"
            "283 5 1 342\n296 3 1 2\n305 2 5 350\n274 3 1 1\n306 2 20 356\n531 3 1 2\n"
            "273 4 1 58384\n279 4 1 3600\n278 3 1 30\n277 3 1 3\n284 3 1 1\n256 4 1 40\n"
            "257 4 1 30\n258 3 3 376\n259 3 1 1\n34665 4 1 382\nnext 592\n");
  EXPECT_EQ(directoryAt(file, 382),
            "36864 7 4 808530480\n36867 2 20 508\n36868 2 20 528\n37121 7 4 197121\n"
            "40960 7 4 808464688\n40961 3 1 1\n40962 4 1 40\n40963 4 1 30\n40964 2 13 548\n"
            "40965 4 1 562\nnext 0\n");
  EXPECT_EQ(directoryAt(file, 562), "1 2 4 3684690\n2 7 4 808464688\nnext 0\n");
  EXPECT_EQ(
      directoryAt(file, 592),
      "256 4 1 160\n257 4 1 120\n258 3 3 742\n259 3 1 1\n282 5 1 748\n283 5 1 756\n"
      "296 3 1 1\n262 3 1 2\n273 4 1 784\n279 4 1 57600\n278 3 1 120\n306 2 20 764\nnext 0\n");
  const std::string text(file.begin(), file.end());
  EXPECT_EQ(text.substr(278, 25), std::string("Orvalle\0Tesslar\0Exif_TIF\0", 25));
  EXPECT_STREQ(&text[350], "Test");
  for (const size_t at : {508, 528, 764}) EXPECT_EQ(text.substr(at, 20), text.substr(356, 20));
  EXPECT_EQ(text.size(), 58384u + 3600u);
}

// Front part and thumbnail fit 65536 bytes or the save fails; directories that do not fit alone
// lose the maker note. One that begins with a zero byte takes no room.
TEST_F(FrontPartTest, MakerNotes) {
  const struct {
    size_t length;
    uint8_t first;
    bool hasThumbnail;
    size_t size;  // 0: none
    const char* exif;
  } cases[] = {
      {7666, 1, true, 65536, "37500 7 7666 176\nnext 0\n"},
      {7667, 1, true, 0, ""},
      {65360, 1, false, 65536, "37500 7 65360 176\nnext 0\n"},
      {65361, 1, false, 164, "36864 7 4 808596016\nnext 0\n"},
      {3, 0, false, 176, "37500 7 2 0\nnext 0\n"},
      {70000, 0, true, 57870, "37500 7 2 0\nnext 0\n"},
      {0, 0, false, 176, "37500 7 0 176\nnext 0\n"},
  };
  for (const auto& [length, first, hasThumbnail, size, exif] : cases) {
    SCOPED_TRACE(length);
    const std::vector<uint8_t> note(length, first);
    setMakerNote(note);
    reader.thumbnailIfdOffset = hasThumbnail ? 700 : 0;
    const Bytes block = build();
    EXPECT_EQ(block.size(), size);
    if (size > 0) {
      EXPECT_NE(directoryAt(block, 146).find(exif), std::string::npos);
    }
    EXPECT_EQ(saveExifTiff(reader, path("a.tif").c_str(), &picture, nullptr, metadata), size > 0);
    EXPECT_EQ(std::filesystem::exists(path("a.tif")), size > 0);
    EXPECT_FALSE(hasTemporary());
  }
}

// Order, type, count and value of every entry: a change of the fingerprint is a change of every
// file that is saved.
TEST_F(FrontPartTest, FullRecords) {
  for (const bool isNew : {false, true}) {
    metadata = fullRecords();
    reader.thumbnailIfdOffset = 700;
    const Bytes block = build(isNew);
    const std::string bytes(block.begin(), block.end()), primary = directoryAt(block, 8);
    const size_t timeAt = std::stoul(primary.substr(primary.find("\n306 2 20 ") + 10));
    EXPECT_EQ(fingerprint(bytes, bytes.substr(timeAt, 19)), isNew ? 4150159089u : 2258195225u);
  }
}

// What a save makes of other records shows when their pictures are opened; here, what it adds.
TEST_F(FrontPartTest, OnlyRecordsWithoutSamplesGainFields) {
  ExifMetadata jpeg = {}, tiff = {};
  tiff.primary.hasSamplesPerPixel = tiff.primary.hasPlanarConfiguration = 1;
  describeTruly(jpeg, picture, nullptr);
  describeTruly(tiff, picture, nullptr);
  EXPECT_EQ(countPresentImageFields(tiff.primary), 2u);
  EXPECT_EQ(countPresentImageFields(jpeg.primary), 5u);
  EXPECT_EQ(countPresentImageFields(jpeg.thumbnail), 0u);
}

}  // namespace
}  // namespace exifkeep::test

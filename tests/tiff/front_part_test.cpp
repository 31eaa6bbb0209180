// The front part of a saved TIFF file: its bytes, its limits, and what of the records it carries.
#include <cstring>

#include "tiff/save_tiff.h"
#include "tiff/tiff_block.h"
#include "write/save_fixture.h"

namespace exifkeep::test {
namespace {

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
  std::string build() {
    const FrontPart part = buildTiffBlockFromRecords(reader, picture, nullptr, metadata);
    const BlockLock lock(part.block);
    return lock.bytes() ? std::string(lock.bytes(), lock.bytes() + part.size) : std::string();
  }

  ExifReader reader;
  PRaster picture = patterned(24, 40, 30);
  ExifMetadata metadata = {};
};

// Front part and thumbnail fit 65536 bytes or the save fails; directories that do not fit alone
// lose the maker note. One that begins with a zero byte takes no room.
TEST_F(FrontPartTest, MakerNotes) {
  constexpr int32_t notLookedFor = -1;
  const struct {
    size_t length;
    uint8_t first;
    int32_t thumbnailIfd;
    size_t size;  // 0: none
    size_t lengthRead;
  } cases[] = {
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

}  // namespace
}  // namespace exifkeep::test

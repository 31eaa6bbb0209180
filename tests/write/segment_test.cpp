// Exif segments: their head, the time in them, and the limit of the block.
#include <cstring>
#include <ctime>

#include "write/jpeg_segment.h"
#include "write/save_fixture.h"
#include "write/save_jpeg.h"

namespace exifkeep::test {
namespace {

std::string bytesOf(const GlobalBlock& block) {
  const BlockLock lock(block);
  if (!lock.bytes()) return {};
  return {reinterpret_cast<const char*>(lock.bytes()), segmentSize(lock.bytes())};
}

// As small as a JPEG file gets, with an APP0 that is not embedded.
const std::string smallThumbnail("\xFF\xD8\xFF\xE0\0\4\1\2\xFF\xD9", 10);

class SegmentTest : public SaveTest {
 protected:
  SegmentTest() { codecFiles.thumbnail = smallThumbnail; }

  std::string fromRecords(const ExifMetadata& metadata) {
    return bytesOf(buildSegmentFromRecords(reader_.codec(), picture_, nullptr, metadata));
  }
  std::string withDefaults(const ExifMetadata& metadata, PRaster* hostThumbnail = nullptr) {
    return bytesOf(buildSegmentWithDefaults(reader_.codec(), picture_, hostThumbnail, metadata.exif,
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

TEST_F(SegmentTest, WithDefaultsShowsTheTimeAndTheHostsResolution) {
  PRaster hostThumbnail = picture(8, 8);
  hostThumbnail.setResolution(0, 11811);
  const std::string before = nowText(), written = withDefaults({}, &hostThumbnail);
  const std::string after = nowText();
  EXPECT_EQ(written.substr(0, 18), std::string("\xFF\xE1", 2) + written.substr(2, 2) +
                                       std::string("Exif\0\0II\x2A\0\x08\0\0\0", 14));
  const ExifMetadata read = readBack(written);
  const std::string time = read.primary.dateTime;
  EXPECT_TRUE(before <= time && time <= after) << before << ' ' << time << ' ' << after;
  EXPECT_EQ(read.exif.dateTimeOriginal + std::string(read.exif.dateTimeDigitized), time + time);
  EXPECT_EQ(read.thumbnail.xResolution.numerator, 0u);
  EXPECT_EQ(read.thumbnail.yResolution.numerator, 300u);
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
               {14, 70000, true, false},     {4096, 58000, true, false},
               {4097, 58000, false, true},   {70000, 0xFFFFFFFF, false, false}};
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

// SPDX-License-Identifier: MIT
#include <array>
#include <cstring>
#include <ctime>

#include "tiff_builder.h"
#include "write/jpeg_segment.h"
#include "write/jpeg_stream.h"
#include "write/save_fixture.h"
#include "write/save_jpeg.h"
#include "write/thumbnail.h"

namespace exifkeep::test {
namespace {

std::string bytesOf(const GlobalBlock& block) {
  const BlockLock lock(block);
  if (!lock.bytes()) return {};
  return {reinterpret_cast<const char*>(lock.bytes()), segmentSize(lock.bytes())};
}

// A minimal JPEG file with an APP0 that is not embedded.
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

TEST_F(SegmentTest, FillsTheBlockToItsLastByte) {
  ExifMetadata metadata = {};
  metadata.exif.hasMakerNote = 1;
  const std::vector<uint8_t> note(60000, 'n');
  metadata.exif.makerNote = note.data();
  metadata.exif.makerNoteLength = 60000;
  const size_t free = 65536 - (fromRecords(metadata).size() - 4);
  // The limit is for the whole file, although its APP0 is not embedded.
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
  const std::tuple<uint32_t, uint32_t, bool, bool> cases[] = {
      {7, 5, true, true},          {65000, 5, false, true},          {0xFFFFFFFF, 5, false, true},
      {40000, 40000, false, true}, {14, 70000, true, false},         {4096, 58000, true, false},
      {4097, 58000, false, true},  {70000, 0xFFFFFFFF, false, false}};
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

std::string counted(size_t size, int start) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(start++ % 251);
  return bytes;
}

const std::string data = counted(900, 77) + jpegEnd;
const std::string quant1 = counted(65, 1), quant2 = counted(65, 2), frame = counted(15, 3);
const std::string dc1 = counted(29, 4), ac1 = counted(179, 5), dc2 = counted(29, 6);
const std::string ac2 = counted(179, 7), scan = counted(10, 8);

// The headers written by the codec, one of which may be of another kind or size.
std::string codecHeaders(uint16_t frameMarker = 0xFFC0, const std::string& secondTable = quant2) {
  return segment(0xFFDB, quant1) + segment(0xFFDB, secondTable) + segment(frameMarker, frame) +
         segment(0xFFC4, dc1) + segment(0xFFC4, ac1) + segment(0xFFC4, dc2) + segment(0xFFC4, ac2) +
         segment(0xFFDA, scan);
}

struct JpegStreamTest : SaveTest {
  std::string compacted(const std::string& stream) {
    codecFiles.picture = stream;
    PRaster image = picture(4, 3);
    return SaveTest::compacted(image);
  }
};

TEST_F(JpegStreamTest, GathersTheTablesAndDropsApp0) {
  const std::string compact = jpegStart + segment(0xFFDB, quant1 + quant2 + quant2) +
                              segment(0xFFC0, frame) + segment(0xFFC4, dc1 + ac1 + dc2 + ac2) +
                              segment(0xFFDA, scan);
  for (const std::string& scans : {data, counted(2 << 20, 5) + data})
    for (int app0 : {0, 4, 18, 53, 54, 65537}) {
      const std::string first = app0 ? segment(0xFFE0, counted(size_t(app0) - 4, 9)) : "";
      const std::string stream = jpegStart + first + codecHeaders() + scans;
      // It is never cut.
      const std::string end = stream.substr(stream.size() - size_t(std::max(0, app0 - 49)));
      EXPECT_TRUE(compacted(stream) == compact + scans + end) << app0;
    }
}

TEST_F(JpegStreamTest, LeavesStreamsOfAnotherLayoutAlone) {
  std::vector<std::string> streams = {
      counted(2000, 0),
      jpegStart + codecHeaders(0xFFC2) + data,
      jpegStart + codecHeaders(0xFFC0, quant1 + quant2) + data,
      jpegStart + segment(0xFFE1, "Exif") + codecHeaders() + data,
      jpegStart + segment(0xFFE0, "") + segment(0xFFE0, "") + codecHeaders() + data,
      jpegStart + "\xFF\xE0\xFF\xF0" + codecHeaders() + data};
  const std::string headers = jpegStart + segment(0xFFE0, counted(14, 0)) + codecHeaders();
  for (size_t size = jpegStart.size(); size <= headers.size() + 1; ++size)
    streams.push_back((headers + data).substr(0, size));
  for (const std::string& stream : streams)
    ASSERT_TRUE(compacted(stream) == stream) << stream.size() << " bytes";
}

using ThumbnailTest = SaveTest;

using Place = std::array<unsigned, 4>;  // left, top, width, height

Place placeOf(const PRaster& thumbnail) {
  unsigned left = 160, top = 120, right = 0, bottom = 0;
  for (unsigned y = 0; y < 120; ++y)
    for (unsigned x = 0; x < 160; ++x) {
      if (thumbnail.GetPixel(int(x), int(y)) == 0) continue;
      left = std::min(left, x), right = std::max(right, x + 1);
      top = std::min(top, y), bottom = std::max(bottom, y + 1);
    }
  return {left, top, right - left, bottom - top};
}

TEST_F(ThumbnailTest, ShowsThePictureInTheMiddle) {
  const std::tuple<unsigned, unsigned, Place> cases[] = {
      {1600, 1000, {0, 10, 160, 100}}, {1000, 1600, {42, 0, 75, 120}}, {100, 50, {30, 35, 100, 50}},
      {80, 60, {0, 0, 160, 120}},      {2000, 1, {0, 59, 160, 1}},     {160, 119, {0, 0, 160, 119}},
      {161, 120, {0, 0, 159, 119}}};
  for (const auto& [width, height, place] : cases)
    for (int bits : {24, 8, 1}) {
      SCOPED_TRACE(testing::Message() << width << 'x' << height << ' ' << bits);
      PRaster source = picture(width, height, bits), thumbnail = picture(3, 3);
      for (unsigned i = 0; bits == 8 && i < 256; ++i)
        source.palette()[i] = {BYTE(i * 7), BYTE(255 - i), 9, 0};
      ASSERT_TRUE(makeThumbnail(source, thumbnail));
      EXPECT_EQ(thumbnail.GetImageType(), source.GetImageType());
      ASSERT_TRUE(source.ConvertTo24bit() && thumbnail.ConvertTo24bit());
      const auto [left, top, placeWidth, placeHeight] = place;
      ASSERT_EQ(placeOf(thumbnail), place);
      if (width == 1 || height == 1) continue;
      for (const unsigned i : {5, 7, 13, 15})  // the middles of the quarters
        EXPECT_EQ(thumbnail.GetPixel(int(left + placeWidth * (i % 4) / 4),
                                     int(top + placeHeight * (i / 4) / 4)),
                  source.GetPixel(int(width * (i % 4) / 4), int(height * (i / 4) / 4)))
            << i;
    }
  PRaster empty, thumbnail, light = picture(320, 80, 8);
  std::fill_n(light.palette(), 256, RGBQUAD{255, 255, 200, 0});
  light.Clear(0);
  ASSERT_TRUE(makeThumbnail(light, thumbnail) && thumbnail.ConvertTo24bit());
  EXPECT_EQ(placeOf(thumbnail), (Place{0, 40, 160, 40}));
  EXPECT_FALSE(makeThumbnail(empty, thumbnail));
}

}  // namespace
}  // namespace exifkeep::test

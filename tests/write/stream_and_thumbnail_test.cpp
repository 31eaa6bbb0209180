// The compaction of the codec's JPEG streams, and the thumbnail made of a picture.
#include <array>
#include <cstring>

#include "tiff_builder.h"
#include "write/jpeg_stream.h"
#include "write/save_fixture.h"
#include "write/thumbnail.h"

namespace exifkeep::test {
namespace {

std::string counted(size_t size, int start) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(start++ % 251);
  return bytes;
}

const std::string data = counted(900, 77) + jpegEnd;
const std::string quant1 = counted(65, 1), quant2 = counted(65, 2), frame = counted(15, 3);
const std::string dc1 = counted(29, 4), ac1 = counted(179, 5), dc2 = counted(29, 6);
const std::string ac2 = counted(179, 7), scan = counted(10, 8);

// The headers as the codec writes them; one may be of another kind or size.
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

// Blue, green and red of a pixel, whatever the depth.
unsigned colourAt(const PRaster& image, unsigned x, unsigned y) {
  const unsigned value = image.GetPixel(int(x), int(y));
  if (!image.palette()) return value;
  const RGBQUAD& colour = image.palette()[image.bitsPerPixel() == 1 ? value & 1 : value];
  return unsigned(colour.rgbBlue << 16 | colour.rgbGreen << 8 | colour.rgbRed);
}

Place placeOf(const PRaster& thumbnail) {
  unsigned left = 160, top = 120, right = 0, bottom = 0;
  for (unsigned y = 0; y < 120; ++y)
    for (unsigned x = 0; x < 160; ++x) {
      if (colourAt(thumbnail, x, y) == 0) continue;
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
      ASSERT_EQ(placeOf(thumbnail), place);
      if (width == 1 || height == 1) continue;
      for (unsigned right : {1, 3})
        for (unsigned down : {1, 3})
          EXPECT_EQ(
              colourAt(thumbnail, place[0] + place[2] * right / 4, place[1] + place[3] * down / 4),
              colourAt(source, width * right / 4, height * down / 4))
              << right << ' ' << down;
    }
  PRaster empty, thumbnail, light = picture(320, 80, 8);
  std::fill_n(light.palette(), 256, RGBQUAD{255, 255, 200, 0});
  light.Clear(0);
  ASSERT_TRUE(makeThumbnail(light, thumbnail));
  EXPECT_EQ(placeOf(thumbnail), (Place{0, 40, 160, 40}));
  EXPECT_FALSE(makeThumbnail(empty, thumbnail));
}

}  // namespace
}  // namespace exifkeep::test

// What the codec writes, byte by byte: the segments of JPEG files and the directory of TIFF files,
// for every depth and from one pixel up. Exif saving relies on both.
#include <map>

#include "picture_fixture.h"

namespace {

// Calls `check` with an image of every depth, with and without a palette, in every size.
void forEachShape(const auto& check) {
  for (const auto& [width, height] : {std::pair{1u, 1u}, {7u, 5u}, {640u, 480u}})
    for (const auto& [bits, coloured] : {std::pair{1, false}, {8, false}, {8, true}, {24, false}}) {
      SCOPED_TRACE(bits * 10000 + int(width));
      PRaster image = patterned(bits, width, height, coloured);
      image.setResolution(5906, 2835);
      check(image);
    }
}

// The marker and the length, marker included, of each segment up to and with SOS.
std::vector<std::pair<int, int>> segmentsOf(const Bytes& jpeg, size_t& position) {
  std::vector<std::pair<int, int>> segments;
  for (position = 2; position + 4 <= jpeg.size() && jpeg[position] == 0xFF;) {
    segments.emplace_back(jpeg[position + 1], 2 + jpeg[position + 2] * 256 + jpeg[position + 3]);
    position += size_t(segments.back().second);
    if (segments.back().first == 0xDA) break;
  }
  return segments;
}

using WrittenLayout = CodecTest;

TEST_F(WrittenLayout, JpegSegments) {
  const std::vector<std::pair<int, int>> expected = {{0xE0, 18}, {0xDB, 69},  {0xDB, 69},
                                                     {0xC0, 19}, {0xC4, 33},  {0xC4, 183},
                                                     {0xC4, 33}, {0xC4, 183}, {0xDA, 14}};
  forEachShape([&](PRaster& image) {
    ASSERT_EQ(save(path("a.jpg"), image), 1);
    const Bytes jpeg = bytesOf(path("a.jpg"));
    ASSERT_GT(jpeg.size(), 623u);
    size_t scan = 0;
    EXPECT_EQ(segmentsOf(jpeg, scan), expected);
    EXPECT_EQ(jpeg[163] * 256u + jpeg[164], image.height());
    EXPECT_EQ(jpeg[165] * 256u + jpeg[166], image.width());
    // The components: 2x1, 1x1, 1x1.
    EXPECT_EQ(Bytes(&jpeg[167], &jpeg[177]), (Bytes{3, 1, 0x21, 0, 2, 0x11, 1, 3, 0x11, 1}));
    // 5906 and 2835 dots per metre are 150 and 72 dots per inch.
    EXPECT_EQ(Bytes(&jpeg[6], &jpeg[18]), (Bytes{'J', 'F', 'I', 'F', 0, 1, 1, 1, 0, 150, 0, 72}));
    // No marker in the entropy-coded data (so no restart), and EOI ends the file.
    for (size_t i = scan; i + 2 < jpeg.size(); ++i)
      ASSERT_TRUE(jpeg[i] != 0xFF || jpeg[i + 1] == 0) << i;
    EXPECT_EQ(jpeg[jpeg.size() - 2] * 256 + jpeg.back(), 0xFFD9);
  });
}

unsigned number(const Bytes& bytes, size_t at, int size) {
  unsigned value = 0;
  while (size-- > 0) value = value << 8 | bytes.at(at + unsigned(size));
  return value;
}

TEST_F(WrittenLayout, TiffDirectoryAndStrip) {
  forEachShape([&](PRaster& image) {
    ASSERT_EQ(save(path("a.tif"), image), 1);
    const Bytes tiff = bytesOf(path("a.tif"));
    const unsigned width = image.width(), height = image.height(), pixels = width * height * 3;
    ASSERT_EQ(Bytes(&tiff[0], &tiff[10]), (Bytes{'I', 'I', 42, 0, 8, 0, 0, 0, 13, 0}));
    std::map<unsigned, unsigned> values;
    unsigned previous = 0;
    for (unsigned at = 10; at < 10 + 12 * 13; at += 12) {
      EXPECT_LT(previous, number(tiff, at, 2));
      values[previous = number(tiff, at, 2)] = number(tiff, at + 8, 4);
    }
    EXPECT_EQ(number(tiff, 10 + 12 * 13, 4), 0u);  // no next directory
    const unsigned bits = values[258], x = values[282], y = values[283];
    const unsigned strip = static_cast<unsigned>(tiff.size()) - pixels;
    const std::map<unsigned, unsigned> expected = {
        {256, width},  {257, height}, {258, bits}, {259, 1}, {262, 2}, {273, strip}, {277, 3},
        {278, height}, {279, pixels}, {282, x},    {283, y}, {284, 1}, {296, 2}};
    EXPECT_EQ(values, expected);
    EXPECT_EQ(Bytes(&tiff[bits], &tiff[bits + 6]), (Bytes{8, 0, 8, 0, 8, 0}));
    EXPECT_EQ(number(tiff, x, 4) / number(tiff, x + 4, 4), 150u);
    EXPECT_EQ(number(tiff, y, 4) / number(tiff, y + 4, 4), 72u);
  });
}

}  // namespace

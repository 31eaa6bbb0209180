// SPDX-License-Identifier: MIT
#include <map>

#include "picture_fixture.h"

namespace exifkeep::test {
namespace {

class WrittenFiles : public ScratchTest {
 protected:
  // Calls `check` with images of every depth, with and without a palette, from one pixel up, and
  // the bytes of the file of each. Checks that the file, read under a neutral name, gives the same
  // image within `error`.
  void forEachShape(const std::string& name, int error, const auto& check) {
    for (const auto& [width, height] : {std::pair{1u, 1u}, {7u, 5u}, {640u, 480u}})
      for (const auto& [bits, hasColours] :
           {std::pair{1, false}, {8, false}, {8, true}, {24, false}}) {
        SCOPED_TRACE(bits * 10000 + int(width));
        PRaster image = patterned(bits, width, height, hasColours);
        image.setResolution(5906, 2835);
        ASSERT_EQ(save(path(name), image), 1);
        check(image, readFile(path(name)));
        std::filesystem::rename(path(name), path("picture"));
        std::optional<PRaster> loaded = load(path("picture"));
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->bitsPerPixel(), name == "a.png" ? unsigned(bits) : 24u);
        EXPECT_EQ(std::pair(loaded->GetDpmX(), loaded->GetDpmY()), std::pair(5906u, 2835u));
        // JPEG is worst at a few steep pixels per block.
        const int tolerance = bits > 1 ? error * (width < 10 ? 2 : 1) : error * 255;
        EXPECT_LE(largestDifference(image, *loaded), tolerance);
      }
  }
};

TEST_F(WrittenFiles, Png) {
  forEachShape("a.png", 0, [](const PRaster&, const std::string&) {});
}

TEST_F(WrittenFiles, JpegSegments) {
  const std::pair<unsigned, unsigned> segments[] = {{0xE0, 18}, {0xDB, 69},  {0xDB, 69},
                                                    {0xC0, 19}, {0xC4, 33},  {0xC4, 183},
                                                    {0xC4, 33}, {0xC4, 183}, {0xDA, 14}};
  forEachShape("a.jpg", 12, [&](const PRaster& image, const std::string& jpeg) {
    unsigned at = 2;
    for (const auto& [marker, size] : segments) {
      EXPECT_EQ(numberAt(jpeg, at, 2, true), 0xFF00u | marker) << at;
      EXPECT_EQ(2 + numberAt(jpeg, at + 2, 2, true), size) << at;
      at += size;
    }
    EXPECT_EQ(numberAt(jpeg, 163, 2, true), image.height());
    EXPECT_EQ(numberAt(jpeg, 165, 2, true), image.width());
    // The components: 2x1, 1x1, 1x1.
    EXPECT_EQ(jpeg.substr(167, 10), std::string("\3\1\x21\0\2\x11\1\3\x11\1", 10));
    // 5906 and 2835 dots per metre are 150 and 72 dots per inch.
    EXPECT_EQ(jpeg.substr(6, 12), std::string("JFIF\0\1\1\1\0\x96\0H", 12));
    // There is no marker in the entropy-coded data (so no restart), and EOI is the end of the file.
    for (; at + 2 < jpeg.size(); ++at) ASSERT_TRUE(jpeg[at] != '\xFF' || jpeg[at + 1] == 0) << at;
    EXPECT_EQ(numberAt(jpeg, at, 2, true), 0xFFD9u);
  });
}

TEST_F(WrittenFiles, TiffDirectoryAndStrip) {
  forEachShape("a.tif", 0, [](const PRaster& image, const std::string& tiff) {
    const unsigned width = image.width(), height = image.height(), pixels = width * height * 3;
    ASSERT_EQ(tiff.substr(0, 10), std::string("II*\0\x8\0\0\0\xD\0", 10));
    std::map<unsigned, unsigned> values;
    unsigned previous = 0;
    for (unsigned at = 10; at < 10 + 12 * 13; at += 12) {
      EXPECT_LT(previous, numberAt(tiff, at, 2));
      values[previous = numberAt(tiff, at, 2)] = numberAt(tiff, at + 8, 4);
    }
    EXPECT_EQ(numberAt(tiff, 10 + 12 * 13, 4), 0u);  // no next directory
    const unsigned bits = values[258], x = values[282], y = values[283];
    const unsigned strip = static_cast<unsigned>(tiff.size()) - pixels;
    const std::map<unsigned, unsigned> expected = {
        {256, width},  {257, height}, {258, bits}, {259, 1}, {262, 2}, {273, strip}, {277, 3},
        {278, height}, {279, pixels}, {282, x},    {283, y}, {284, 1}, {296, 2}};
    EXPECT_EQ(values, expected);
    EXPECT_EQ(tiff.substr(bits, 6), std::string("\x8\0\x8\0\x8\0", 6));
    EXPECT_EQ(numberAt(tiff, x, 4) / numberAt(tiff, x + 4, 4), 150u);
    EXPECT_EQ(numberAt(tiff, y, 4) / numberAt(tiff, y + 4, 4), 72u);
  });
}

int progressCalls = 0;
int countProgress(int done, int from, int to) {
  progressCalls += from <= done && done < to;
  return 0;
}

TEST_F(WrittenFiles, ReplaceLongerOnesAndReportProgress) {
  PRaster image = patterned(24, 20, 150), small = patterned(24, 2, 2);
  tagLmmInfo info;
  image.GetLmmInfo(info);
  for (const std::string name : {"a.jpg", "a.tif", "a.png"}) {
    progressCalls = 0;
    ASSERT_EQ(AllSaveDIBImg(path(name).c_str(), &info, 0, countProgress), 1);
    ASSERT_EQ(AllReadDIBImg(path(name).c_str(), &info, 0, countProgress), 1);
    EXPECT_GE(progressCalls, 4) << name;
    ASSERT_EQ(save(path(name), small) + save(path("new_" + name), small), 2);
    EXPECT_EQ(readFile(path(name)), readFile(path("new_" + name)));
  }
}

}  // namespace
}  // namespace exifkeep::test

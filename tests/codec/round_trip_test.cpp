// Pictures written and read back: TIFF and PNG exactly, JPEG within a small error, resolution
// included.
#include "picture_fixture.h"

namespace {

using RoundTrip = CodecTest;

TEST_F(RoundTrip, KeepsPixelsAndResolution) {
  const unsigned sizes[][2] = {{1, 1}, {7, 5}, {160, 120}, {333, 250}};
  const struct {
    const char* name;
    int largestError;
    bool keepsDepth;
  } formats[] = {{"a.tif", 0, false}, {"a.png", 0, true}, {"a.jpg", 12, false}};
  for (const auto& format : formats)
    for (const auto& [width, height] : sizes)
      for (const auto& [bits, coloured] : {std::pair{24, false}, {8, false}, {8, true}}) {
        PRaster image = patterned(bits, width, height, coloured);
        image.setResolution(11811, 5906);
        ASSERT_EQ(save(path(format.name), image), 1);
        std::optional<PRaster> loaded = load(path(format.name));
        ASSERT_TRUE(loaded) << format.name;
        EXPECT_EQ(loaded->bitsPerPixel(), format.keepsDepth ? unsigned(bits) : 24u);
        EXPECT_EQ(loaded->GetDpmX(), 11811u) << format.name;
        EXPECT_EQ(loaded->GetDpmY(), 5906u) << format.name;
        // A few steep pixels a block are what JPEG shows worst.
        EXPECT_LE(largestDifference(image, *loaded), format.largestError * (width < 10 ? 2 : 1))
            << format.name << ' ' << bits << ' ' << width;
      }
}

TEST_F(RoundTrip, KeepsBilevelPicturesAndUnknownResolution) {
  for (const char* name : {"a.png", "a.tif"}) {
    PRaster image = patterned(1, 77, 33);
    ASSERT_EQ(save(path(name), image), 1);
    std::optional<PRaster> loaded = load(path(name));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->GetDpmX() + loaded->GetDpmY(), 0u);
    EXPECT_EQ(largestDifference(image, *loaded), 0);
  }
}

int progressCalls = 0;
int countProgress(int done, int from, int to) {
  progressCalls += from <= done && done < to;
  return 0;
}

TEST_F(RoundTrip, ReplacesLongerFilesAndReportsProgress) {
  PRaster image = patterned(24, 20, 150), small = patterned(24, 2, 2);
  tagLmmInfo info;
  image.GetLmmInfo(info);
  for (const char* name : {"a.jpg", "a.tif", "a.png"}) {
    progressCalls = 0;
    ASSERT_EQ(AllSaveDIBImg(path(name).c_str(), &info, 0, countProgress), 1);
    EXPECT_GE(progressCalls, 2) << name;
    progressCalls = 0;
    ASSERT_EQ(AllReadDIBImg(path(name).c_str(), &info, 0, countProgress), 1);
    EXPECT_GE(progressCalls, 2) << name;
    ASSERT_EQ(save(path(name), small), 1);
    ASSERT_EQ(save(path(std::string("new_") + name), small), 1);
    EXPECT_EQ(bytesOf(path(name)), bytesOf(path(std::string("new_") + name)));
  }
}

TEST_F(RoundTrip, GoesByContentNotByName) {
  PRaster image = patterned(24, 9, 4);
  ASSERT_EQ(save(path("a.png"), image), 1);
  std::filesystem::rename(path("a.png"), path("a.jpg"));
  std::optional<PRaster> loaded = load(path("a.jpg"));
  ASSERT_TRUE(loaded);
  EXPECT_EQ(largestDifference(image, *loaded), 0);
}

}  // namespace

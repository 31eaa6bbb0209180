// Pictures written and read back: TIFF and PNG exactly, JPEG within a small error, resolution
// included. Reading goes by content, so every file is read under a name that says nothing.
#include "picture_fixture.h"

namespace {

using RoundTrip = CodecTest;

TEST_F(RoundTrip, KeepsPixelsAndResolution) {
  const std::pair<std::string, int> formats[] = {{"a.tif", 0}, {"a.png", 0}, {"a.jpg", 12}};
  for (const auto& [name, error] : formats)
    for (const auto& [width, height] : {std::pair{1u, 1u}, {7u, 5u}, {333u, 250u}})
      for (const auto& [bits, coloured] :
           {std::pair{24, false}, {8, false}, {8, true}, {1, false}}) {
        if (bits == 1 && error != 0) continue;  // single black pixels are no picture for JPEG
        SCOPED_TRACE(name + ' ' + std::to_string(bits) + ' ' + std::to_string(width));
        PRaster image = patterned(bits, width, height, coloured);
        if (coloured) image.setResolution(11811, 5906);
        ASSERT_EQ(save(path(name), image), 1);
        std::filesystem::rename(path(name), path("picture"));
        std::optional<PRaster> loaded = load(path("picture"));
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->bitsPerPixel(), name == "a.png" ? unsigned(bits) : 24u);
        EXPECT_EQ(loaded->GetDpmX(), image.GetDpmX());
        EXPECT_EQ(loaded->GetDpmY(), image.GetDpmY());
        // A few steep pixels a block are what JPEG shows worst.
        EXPECT_LE(largestDifference(image, *loaded), error * (width < 10 ? 2 : 1));
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
  for (const std::string name : {"a.jpg", "a.tif", "a.png"}) {
    progressCalls = 0;
    ASSERT_EQ(AllSaveDIBImg(path(name).c_str(), &info, 0, countProgress), 1);
    ASSERT_EQ(AllReadDIBImg(path(name).c_str(), &info, 0, countProgress), 1);
    EXPECT_GE(progressCalls, 4) << name;
    ASSERT_EQ(save(path(name), small) + save(path("new_" + name), small), 2);
    EXPECT_EQ(bytesOf(path(name)), bytesOf(path("new_" + name)));
  }
}

}  // namespace

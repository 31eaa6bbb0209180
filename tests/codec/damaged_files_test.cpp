// SPDX-License-Identifier: MIT
// Damaged, truncated and hostile files quickly give either a clean failure or a picture, without
// crash, message or exit.

#include <cstring>

#include "failure_switch.h"
#include "picture_fixture.h"
#include "tiff_builder.h"

namespace exifkeep::test {
namespace {

class DamagedFiles : public ScratchTest {
 protected:
  void SetUp() override { testing::internal::CaptureStderr(); }
  void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

  std::string saved(const std::string& name, PRaster image) {
    EXPECT_EQ(save(path(name), image), 1);
    return readFile(path(name));
  }

  bool loads(const std::string& bytes) {
    writeFile(path("damaged"), bytes);
    return load(path("damaged")).has_value();
  }
};

TEST_F(DamagedFiles, EveryPrefixFails) {
  for (const char* name : {"a.tif", "a.png"}) {
    const std::string whole = saved(name, patterned(24, 9, 7));
    for (size_t size = 0; size <= whole.size(); ++size)
      ASSERT_EQ(loads(whole.substr(0, size)), size == whole.size()) << name << ' ' << size;
  }
}

TEST_F(DamagedFiles, JpegIsDecodedAsFarAsPossible) {
  constexpr unsigned height = 60;  // eight rows of blocks, of which the last is half outside
  const std::string whole = saved("a.jpg", patterned(24, 40, height));
  const PRaster picture = *load(path("a.jpg"));
  std::vector<unsigned> losses;
  for (size_t size = 0; size < whole.size(); ++size) {
    writeFile(path("damaged"), whole.substr(0, size));
    const std::optional<PRaster> cut = load(path("damaged"));
    const unsigned lost = cut ? cut->lostRows() : height;
    if (losses.empty() || losses.back() != lost) losses.push_back(lost);
    for (unsigned y = 0; y < height - lost; ++y)
      ASSERT_EQ(std::memcmp(cut->row(y).data(), picture.row(y).data(), 120), 0) << y;
  }
  EXPECT_EQ(losses, (std::vector<unsigned>{60, 52, 44, 36, 28, 20, 12, 4, 0}));
}

TEST_F(DamagedFiles, HugeSizesFailAtOnce) {
  const std::string tiff = saved("a.tif", patterned(24, 8, 8));
  std::vector hostile(2, saved("a.png", patterned(24, 8, 8)));
  for (size_t i : {0, 1}) hostile[i].replace(16 + 4 * i, 4, "\x7F\xFF\xFF\xFF");  // of the IHDR
  for (const uint32_t size : {0xFFFFFFFFu, 0xFF3F0040u, 0x01000080u})
    for (const size_t entry : {0, 1, 5, 7, 8}) {  // width, length, offset, strip rows, byte count
      hostile.push_back(tiff);
      hostile.back().replace(10 + 12 * entry + 2, 2, number(typeLong, 2));
      hostile.back().replace(10 + 12 * entry + 8, 4, number(size, 4));
    }
  int loaded = 0;
  for (const std::string& bytes : hostile) loaded += loads(bytes);
  EXPECT_LE(loaded, 6);  // too many rows and bytes per strip are harmless

  // A well-formed file that claims 16384 x 16383 pixels but has almost none.
  std::string jpeg = saved("a.jpg", patterned(24, 8, 8));
  jpeg.replace(163, 4, std::string("\x40\0\x3F\xFF", 4));
  BITMAPINFOHEADER header;
  for (const int plausible : {0, 1}) {
    if (plausible) jpeg.resize(600000);  // now the size is plausible but not the data
    EXPECT_FALSE(loads(jpeg));
    EXPECT_EQ(AllReadHeader(path("damaged").c_str(), &header), plausible);
  }
}

// A progressive picture that repeats the scan of its first component's DC (code 00: no difference).
TEST_F(DamagedFiles, EndlessScansAreLimited) {
  std::string jpeg = saved("a.jpg", patterned(24, 8, 8));
  jpeg.replace(158, 2, "\xFF\xC2");  // SOF2
  jpeg.resize(2 + 18 + 138 + 19 + 432);
  for (int scans = 1; scans <= 101; ++scans) {
    jpeg += std::string("\xFF\xDA\0\x8\1\1\0\0\0\0\x3F", 11);
    if (scans < 100) continue;
    EXPECT_EQ(loads(jpeg + jpegEnd), scans == 100);
    EXPECT_EQ(loads(jpeg), scans == 100);
    if (scans > 100) continue;
    EXPECT_EQ(load(path("damaged"))->lostRows(), 8u) << "more scans may be missing";
  }
}

int readInto(const std::string& path, auto&& image) {
  tagLmmInfo info;
  image.GetLmmInfo(info);
  return AllReadDIBImg(path.c_str(), &info, 0, nullptr);
}

TEST_F(DamagedFiles, RefusesAnImageOfAnotherShapeAndAReadThatFails) {
  for (const char* name : {"a.jpg", "a.tif", "a.png"}) {
    saved(name, patterned(24, 300, 200));
    for (const auto& [bits, width, height] :
         {std::tuple{24, 300u, 201u}, {24, 301u, 200u}, {8, 300u, 200u}})
      EXPECT_EQ(readInto(path(name), patterned(bits, width, height)), 0) << name;
#ifndef _WIN32  // its own calls cannot be made to fail
    for (int n = 1, reads = 1; n <= reads; ++n) {
      failCall(PlatformCall::read, n);
      EXPECT_EQ(readInto(path(name), patterned(24, 300, 200)), 0) << name << ' ' << n;
      clearFailures();
      ASSERT_EQ(readInto(path(name), patterned(24, 300, 200)), 1);
      reads = callsMade(PlatformCall::read);
      clearFailures();
    }
#endif
  }
}

}  // namespace
}  // namespace exifkeep::test

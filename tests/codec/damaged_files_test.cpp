// Damaged, truncated and hostile files: a clean failure, or a picture, quickly; never a crash, a
// message on stderr or an exit.

#include <cstring>

#include "failure_switch.h"
#include "picture_fixture.h"

namespace {

class DamagedFiles : public CodecTest {
 protected:
  void SetUp() override { testing::internal::CaptureStderr(); }
  void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

  Bytes saved(const std::string& name, PRaster image) {
    EXPECT_EQ(save(path(name), image), 1);
    return bytesOf(path(name));
  }

  bool loads(const Bytes& bytes) {
    writeBytes(path("damaged"), bytes);
    return load(path("damaged")).has_value();
  }
};

TEST_F(DamagedFiles, EveryPrefixFails) {
  for (const char* name : {"a.jpg", "a.tif", "a.png"}) {
    const Bytes whole = saved(name, patterned(24, 9, 7));
    ASSERT_TRUE(loads(whole));
    // A JPEG picture whose scan is complete may lack its EOI.
    const size_t least = whole.size() - (name[2] == 'j' ? 2 : 0);
    for (size_t size = 0; size <= least; ++size)
      ASSERT_EQ(loads(Bytes(whole.begin(), whole.begin() + long(size))), size == least)
          << name << ' ' << size;
  }
}

TEST_F(DamagedFiles, JpegPicturesComeAsFarAsTheyGo) {
  constexpr unsigned height = 60;  // eight rows of blocks, the last half outside
  const Bytes whole = saved("a.jpg", patterned(24, 40, height));
  const PRaster picture = *load(path("a.jpg"));
  std::vector<unsigned> losses;
  for (auto end = whole.begin(); end != whole.end(); ++end) {
    writeBytes(path("damaged"), Bytes(whole.begin(), end));
    const std::optional<PRaster> cut = load(path("damaged"));
    const unsigned lost = cut ? cut->lostRows() : height;
    if (losses.empty() || losses.back() != lost) losses.push_back(lost);
    for (unsigned y = 0; y < height - lost; ++y)
      ASSERT_EQ(std::memcmp(cut->row(y).data(), picture.row(y).data(), 120), 0) << y;
  }
  EXPECT_EQ(losses, (std::vector<unsigned>{60, 52, 44, 36, 28, 20, 12, 4, 0}));
}

void put(Bytes& bytes, size_t at, const Bytes& value) {
  std::copy(value.begin(), value.end(), bytes.begin() + long(at));
}

TEST_F(DamagedFiles, GiganticSizesComeBackAtOnce) {
  const Bytes tiff = saved("a.tif", patterned(24, 8, 8));
  std::vector<Bytes> hostile(2, saved("a.png", patterned(24, 8, 8)));
  put(hostile[0], 16, {0x7F, 0xFF, 0xFF, 0xFF});  // IHDR: width, height
  put(hostile[1], 20, {0x7F, 0xFF, 0xFF, 0xFF});
  for (const Bytes& size : {Bytes{0xFF, 0xFF, 0xFF, 0xFF}, {0x40, 0, 0x3F, 0xFF}, {0x80, 0, 0, 1}})
    for (size_t entry : {0, 1, 5, 7, 8}) {  // width, length, offset, rows a strip, byte count
      hostile.push_back(tiff);
      put(hostile.back(), 10 + 12 * entry + 2, {4, 0});  // as LONG
      put(hostile.back(), 10 + 12 * entry + 8, size);
    }
  int loaded = 0;
  for (const Bytes& bytes : hostile) loaded += loads(bytes);
  EXPECT_LE(loaded, 6);  // too many rows a strip and bytes a strip do no harm

  // A well-formed file that claims 16384 x 16383 pixels and holds next to none.
  Bytes jpeg = saved("a.jpg", patterned(24, 8, 8));
  put(jpeg, 163, {0x40, 0x00, 0x3F, 0xFF});
  BITMAPINFOHEADER header;
  for (const int plausible : {0, 1}) {
    if (plausible) jpeg.resize(600000);  // now the size alone is plausible, the data is not
    EXPECT_FALSE(loads(jpeg));
    EXPECT_EQ(AllReadHeader(path("damaged").c_str(), &header), plausible);
  }
}

// A progressive picture whose first component's DC (code 00: no difference) comes again and again.
TEST_F(DamagedFiles, EndlessScansAreCutShort) {
  Bytes jpeg = saved("a.jpg", patterned(24, 8, 8));
  put(jpeg, 158, {0xFF, 0xC2});  // SOF2
  jpeg.resize(2 + 18 + 138 + 19 + 432);
  for (int scans = 1; scans <= 101; ++scans) {
    jpeg.insert(jpeg.end(), {0xFF, 0xDA, 0, 8, 1, 1, 0, 0, 0, 0, 0x3F});
    if (scans < 100) continue;
    Bytes ended = jpeg;
    ended.insert(ended.end(), {0xFF, 0xD9});
    EXPECT_EQ(loads(ended), scans == 100);
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

TEST_F(DamagedFiles, RefusesAnImageOfAnotherShape) {
  for (const char* name : {"a.jpg", "a.tif", "a.png"}) {
    saved(name, patterned(24, 8, 8));
    for (const auto& [bits, width, height] : {std::tuple{24, 8u, 9u}, {24, 9u, 8u}, {8, 8u, 8u}})
      EXPECT_EQ(readInto(path(name), patterned(bits, width, height)), 0) << name;
  }
}

TEST_F(DamagedFiles, AReadThatFailsIsNoEndOfTheFile) {
  for (const char* name : {"a.jpg", "a.tif", "a.png"}) {
    saved(name, patterned(24, 300, 200));
    int reads = 1;
    for (int n = 1; n <= reads; ++n) {
      exifkeep::failCall(exifkeep::PlatformCall::read, n);
      EXPECT_EQ(readInto(path(name), patterned(24, 300, 200)), 0) << name << ' ' << n;
      exifkeep::clearFailures();
      ASSERT_EQ(readInto(path(name), patterned(24, 300, 200)), 1);
      reads = exifkeep::callsMade(exifkeep::PlatformCall::read);
      exifkeep::clearFailures();
    }
  }
}

}  // namespace

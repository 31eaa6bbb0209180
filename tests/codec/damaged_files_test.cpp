// Damaged, truncated and hostile files: a clean failure, or a picture, quickly; never a crash, a
// message on stderr or an exit.
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstring>

#include "failure_switch.h"
#include "picture_fixture.h"

namespace {

using Clock = std::chrono::steady_clock;

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
    const std::size_t least = whole.size() - (name[2] == 'j' ? 2 : 0);
    for (std::size_t size = 0; size <= least; ++size)
      ASSERT_EQ(loads(Bytes(whole.begin(), whole.begin() + long(size))), size == least)
          << name << ' ' << size;
  }
}

TEST_F(DamagedFiles, FlippedBitsNeverCrash) {
  unsigned seed = 1;
  const auto random = [&seed] { return (seed = seed * 1664525 + 1013904223) >> 8; };
  for (const char* name : {"a.jpg", "a.tif", "a.png", "b.tif"}) {
    const Bytes whole = saved(name, patterned(name[0] == 'b' ? 1 : 24, 33, 29));
    int loaded = 0;
    for (int round = 0; round < 400; ++round) {
      Bytes bytes = whole;
      const std::size_t range = round % 2 ? bytes.size() : std::min<std::size_t>(200, bytes.size());
      for (int flips = 0; flips <= round % 3; ++flips)
        bytes[random() % range] ^= static_cast<unsigned char>(1 << random() % 8);
      loaded += loads(bytes);
    }
    EXPECT_LT(loaded, 400) << name;
  }
}

void put(Bytes& bytes, std::size_t at, const Bytes& value) {
  std::copy(value.begin(), value.end(), bytes.begin() + long(at));
}

TEST_F(DamagedFiles, GiganticSizesComeBackAtOnce) {
  const Bytes tiff = saved("a.tif", patterned(24, 8, 8)), png = saved("a.png", patterned(24, 8, 8));
  std::vector<Bytes> hostile(2, png);
  put(hostile[0], 16, {0x7F, 0xFF, 0xFF, 0xFF});  // IHDR: width, height
  put(hostile[1], 20, {0x7F, 0xFF, 0xFF, 0xFF});
  for (const Bytes& size : {Bytes{0xFF, 0xFF, 0xFF, 0xFF}, {0x40, 0, 0x3F, 0xFF}, {0x80, 0, 0, 1}})
    for (std::size_t entry : {0, 1, 5, 7, 8}) {  // width, length, offset, rows a strip, byte count
      hostile.push_back(tiff);
      put(hostile.back(), 10 + 12 * entry + 2, {4, 0});  // as LONG
      put(hostile.back(), 10 + 12 * entry + 8, size);
    }
  const auto start = Clock::now();
  int loaded = 0;
  for (const Bytes& bytes : hostile) loaded += loads(bytes);
  EXPECT_LE(loaded, 6);  // too many rows a strip and bytes a strip do no harm
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(30));
}

// A well-formed file that claims 16384 x 16383 pixels and holds next to none.
TEST_F(DamagedFiles, EmptyGiantsAreToldOff) {
  Bytes jpeg = saved("a.jpg", patterned(24, 8, 8));
  put(jpeg, 163, {0x40, 0x00, 0x3F, 0xFF});
  writeBytes(path("giant"), jpeg);
  BITMAPINFOHEADER header;
  EXPECT_EQ(AllReadHeader(path("giant").c_str(), &header), 0);
  jpeg.resize(600000);  // now the size alone is plausible, the data is not
  writeBytes(path("giant"), jpeg);
  EXPECT_EQ(AllReadHeader(path("giant").c_str(), &header), 1);
  EXPECT_FALSE(load(path("giant")));
}

TEST_F(DamagedFiles, RefusesTwelveBitsAndSkipsExtraneousBytes) {
  const Bytes jpeg = saved("a.jpg", patterned(24, 8, 8));
  Bytes twelveBits = jpeg;
  twelveBits[162] = 12;
  EXPECT_FALSE(loads(twelveBits));
  Bytes extraneous = jpeg;  // bytes between two segments do no harm
  extraneous.insert(extraneous.begin() + 20, {0, 1, 2, 3});
  EXPECT_TRUE(loads(extraneous));
}

// A progressive picture whose first component's DC (code 00: no difference) comes again and again.
TEST_F(DamagedFiles, EndlessScansAreCutShort) {
  Bytes jpeg = saved("a.jpg", patterned(24, 8, 8));
  put(jpeg, 158, {0xFF, 0xC2});  // SOF2
  jpeg.resize(2 + 18 + 138 + 19 + 432);
  for (int scans = 1; scans <= 110; ++scans) {
    const Bytes scan = {0xFF, 0xDA, 0, 8, 1, 1, 0, 0, 0, 0, 0x3F};
    jpeg.insert(jpeg.end(), scan.begin(), scan.end());
    Bytes ended = jpeg;
    ended.insert(ended.end(), {0xFF, 0xD9});
    if (scans % 10 == 0) {
      EXPECT_EQ(loads(ended), scans <= 100) << scans;
      EXPECT_FALSE(loads(jpeg)) << scans;  // more scans may be missing
    }
  }
}

TEST_F(DamagedFiles, OnlyRegularFilesOpen) {
  PRaster image = patterned(24, 2, 2);
  BITMAPINFOHEADER header;
  ASSERT_EQ(mkfifo(path("fifo.jpg").c_str(), 0600), 0);
  EXPECT_EQ(save(path("fifo.jpg"), image), 0);
  for (const std::string& name : {path("fifo.jpg"), path(""), path("absent.jpg"), std::string()}) {
    EXPECT_EQ(AllReadHeader(name.c_str(), &header), 0);
    EXPECT_EQ(AllReadPalette(name.c_str()), nullptr);
    EXPECT_FALSE(load(name));
  }
}

TEST_F(DamagedFiles, RefusesAnImageOfAnotherShape) {
  for (const char* name : {"a.jpg", "a.tif", "a.png"}) {
    saved(name, patterned(24, 8, 8));
    for (const auto& [bits, width, height] : {std::tuple{24, 8, 9}, {24, 9, 8}, {8, 8, 8}}) {
      PRaster image = patterned(bits, unsigned(width), unsigned(height));
      tagLmmInfo info;
      image.GetLmmInfo(info);
      EXPECT_EQ(AllReadDIBImg(path(name).c_str(), &info, 0, nullptr), 0);
    }
  }
}

TEST_F(DamagedFiles, EveryFailingReadIsAFailure) {
  using exifkeep::PlatformCall;
  PRaster image = patterned(24, 40, 30);
  tagLmmInfo info;
  image.GetLmmInfo(info);
  for (const char* name : {"a.jpg", "a.tif", "a.png"}) {
    ASSERT_EQ(save(path(name), image), 1);
    for (PlatformCall kind : {PlatformCall::open, PlatformCall::read, PlatformCall::codec}) {
      exifkeep::clearFailures();
      ASSERT_EQ(AllReadDIBImg(path(name).c_str(), &info, 0, nullptr), 1);
      const int calls = exifkeep::callsMade(kind);
      EXPECT_GT(calls, 0);
      for (int n = 1; n <= calls; ++n) {
        exifkeep::clearFailures();
        exifkeep::failCall(kind, n);
        EXPECT_EQ(AllReadDIBImg(path(name).c_str(), &info, 0, nullptr), 0)
            << name << ' ' << int(kind) << ' ' << n;
      }
    }
  }
  exifkeep::clearFailures();
}

}  // namespace

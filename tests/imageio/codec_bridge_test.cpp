// The codec bridge. The codec's list of formats is this test's own: the function below takes the
// place of the real one when the program is linked. The rest of the codec is real.
#include "imageio/image_codec_bridge.h"

#include <cstring>

#include "codec/picture_fixture.h"
#include "failure_switch.h"

namespace {

std::vector<std::pair<std::string, bool>> formats;  // extension, writable
short formatCount = 0;

}  // namespace

short AllGetReadWriteCaps(HWND, HGLOBAL block) {
  EXPECT_EQ(GlobalSize(block), 1300u);
  char* record = static_cast<char*>(GlobalLock(block));
  for (const auto& [extension, writable] : formats) {
    std::memset(record, 0xEE, 52);
    std::memcpy(record, extension.c_str(), std::min<std::size_t>(8, extension.size() + 1));
    const int flags[2] = {1, writable};
    std::memcpy(record + 8, flags, 8);
    record += 52;
  }
  GlobalUnlock(block);
  return formatCount;
}

namespace {

class CodecBridge : public CodecTest {
 protected:
  CodecBridge() {
    // The last name fills its field without a NUL; what follows the field is no part of it.
    formats = {{"jpg", true}, {"psd", false}, {"longname", true}};
    formatCount = 3;
    AfxSetMessageBoxHandler(
        [](void* boxes, const char*, UINT) { return ++*static_cast<int*>(boxes), IDOK; }, &boxes_);
  }
  ~CodecBridge() override {
    AfxSetMessageBoxHandler(nullptr, nullptr);
    EXPECT_EQ(exifkeep::livePalettes(), 0);
    EXPECT_EQ(exifkeep::liveBlocks(), 0);
  }

  exifkeep::ImageCodecBridge bridge_;
  int boxes_ = 0;
};

TEST_F(CodecBridge, FindsFormatsWhateverTheirCase) {
  EXPECT_TRUE(bridge_.loadCapabilities());
  const std::pair<const char*, int> cases[] = {{"JPG", 0},           {"Psd", 1}, {"LongName", 2},
                                               {"longname\x01", -1}, {"jp", -1}, {"", -1}};
  for (const auto& [name, index] : cases) {
    EXPECT_EQ(bridge_.findFormat(name), index) << name;
    EXPECT_EQ(bridge_.canWrite(name), index == 0 || index == 2) << name;
  }
  formats.resize(25, {"x", true});
  for (const auto& [reported, count] : {std::pair{30, 25}, {0, 0}, {-32768, 0}}) {
    formatCount = static_cast<short>(reported);
    EXPECT_EQ(bridge_.loadCapabilities(), count > 0);
    EXPECT_EQ(bridge_.formatCount, count);
  }
}

TEST_F(CodecBridge, LoadsPixelsPaletteAndResolution) {
  PRaster picture = patterned(8, 30, 20, true);
  picture.setResolution(2835, 3937);
  ASSERT_EQ(save(path("a.png"), picture), 1);
  const auto image = bridge_.loadImageFile(path("a.png").c_str());  // needs no capabilities
  ASSERT_TRUE(image);
  EXPECT_EQ(image->GetImageType(), PRaster::type8Bit);
  EXPECT_EQ(std::tuple(image->GetDpmX(), image->GetDpmY()), std::tuple(2835u, 3937u));
  EXPECT_EQ(largestDifference(*image, picture), 0);

  Bytes whole = bytesOf(path("a.png"));
  std::filesystem::rename(path("a.png"), path("name"));
  EXPECT_FALSE(bridge_.loadImageFile(path("name").c_str()));
  whole.resize(whole.size() - 20);
  writeBytes(path("cut.png"), whole);  // header and palette are there
  EXPECT_FALSE(bridge_.loadImageFile(path("cut.png").c_str()));
}

TEST_F(CodecBridge, SavesUnderWritableNamesOnly) {
  PRaster image = patterned(24, 3, 2);
  const std::string good = path("a.b.JPG");
  EXPECT_FALSE(bridge_.saveImageFile(good.c_str(), image));  // no capabilities
  ASSERT_TRUE(bridge_.loadCapabilities());
  for (const char* name : {"a.psd", "a.gif", "jpg", "d.jpg/a"})
    EXPECT_FALSE(bridge_.saveImageFile(path(name).c_str(), image)) << name;
  EXPECT_EQ(boxes_, 5);
  EXPECT_TRUE(bridge_.saveImageFile(good.c_str(), image));
  EXPECT_TRUE(load(good));
  EXPECT_FALSE(bridge_.saveImageFile(path("none/a.jpg").c_str(), image));  // the codec's refusal
  EXPECT_EQ(boxes_, 5);
}

}  // namespace

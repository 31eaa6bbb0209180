// The codec bridge over a codec of this test's own: the five functions below take the place of the
// real ones when the program is linked.
#include "imageio/image_codec_bridge.h"

#include <gtest/gtest.h>
#include <pxcodec32.h>

#include <cstring>
#include <string>
#include <vector>

#include "failure_switch.h"
#include "imageio/path_extension.h"

namespace {

struct FakeCodec {
  struct Format {
    std::string extension;
    bool writable;
  };
  std::vector<Format> formats = {{"jpg", true}, {"psd", false}};
  short count = 2;
  int width = 3, height = 2, bits = 8;
  bool givesPalette = false, readsPixels = true, saves = true;
  HWND owner = nullptr;
  std::vector<std::string> saved;
  int progressResult = -1;
} codec;

}  // namespace

short AllGetReadWriteCaps(HWND owner, HGLOBAL block) {
  codec.owner = owner;
  EXPECT_EQ(GlobalSize(block), 1300u);
  char* record = static_cast<char*>(GlobalLock(block));
  for (std::size_t i = 0; i < codec.formats.size() && i < 25; ++i, record += 52) {
    std::memset(record, 0xEE, 52);
    const std::string& extension = codec.formats[i].extension;
    std::memcpy(record, extension.c_str(), std::min<std::size_t>(8, extension.size() + 1));
    const int flags[2] = {1, codec.formats[i].writable};
    std::memcpy(record + 8, flags, 8);
  }
  GlobalUnlock(block);
  return codec.count;
}

int AllReadHeader(const char*, BITMAPINFOHEADER* header) {
  if (exifkeep::failsNow(exifkeep::PlatformCall::codec)) return 0;
  header->biWidth = codec.width;
  header->biHeight = codec.height;
  header->biBitCount = static_cast<WORD>(codec.bits);
  header->biXPelsPerMeter = 2835;
  header->biYPelsPerMeter = 3937;
  header->biClrUsed = 2;
  return 1;
}

HPALETTE AllReadPalette(const char*) {
  const LOGPALETTE colours = {0x300, 1, {{10, 20, 30, 0}}};
  return codec.givesPalette ? CreatePalette(&colours) : nullptr;
}

int AllReadDIBImg(const char*, const tagLmmInfo* image, unsigned offset, CodecProgress progress) {
  EXPECT_EQ(offset, 0u);
  codec.progressResult = progress(1, 2, 3);
  image->bits[0] = 42;  // the bottom left pixel
  return codec.readsPixels;
}

int AllSaveDIBImg(const char* path, const tagLmmInfo* image, unsigned, CodecProgress progress) {
  EXPECT_EQ(image->header->biWidth, 3);
  codec.progressResult = progress(1, 2, 3);
  codec.saved.push_back(path);
  return codec.saves;
}

namespace {

using exifkeep::extensionOf;
using exifkeep::ImageCodecBridge;
using exifkeep::PlatformCall;

int boxes = 0;
int countBox(void*, const char* text, UINT type) {
  EXPECT_STRNE(text, "");
  EXPECT_EQ(type, MB_OK);
  ++boxes;
  return IDOK;
}

class CodecBridge : public testing::Test {
 protected:
  void SetUp() override {
    codec = {};
    boxes = 0;
    AfxSetMessageBoxHandler(countBox, nullptr);
    exifkeep::clearFailures();
    palettes_ = exifkeep::livePalettes();
    blocks_ = exifkeep::liveBlocks();
  }
  void TearDown() override {
    exifkeep::clearFailures();
    AfxSetMessageBoxHandler(nullptr, nullptr);
    EXPECT_EQ(exifkeep::livePalettes(), palettes_);
    EXPECT_EQ(exifkeep::liveBlocks(), blocks_);
  }

  ImageCodecBridge bridge_;

 private:
  int palettes_ = 0, blocks_ = 0;
};

TEST_F(CodecBridge, TakesTheExtensionAfterTheLastDot) {
  const std::pair<const char*, const char*> cases[] = {
      {"a.jpg", "jpg"}, {"a.b.TIF", "TIF"}, {"a", "a"}, {"a.", ""}, {"", ""}, {"x.y/z", "y/z"}};
  for (const auto& [path, extension] : cases) {
    EXPECT_EQ(extensionOf(path), extension);
    EXPECT_EQ(ImageCodecBridge::getExtension(path), extension);
  }
}

TEST_F(CodecBridge, FindsFormatsWhateverTheirCase) {
  // The last name fills its field without a NUL; what follows the field is no part of it.
  codec.formats = {{"jpg", true}, {"psd", false}, {"longname", true}};
  codec.count = 3;
  EXPECT_FALSE(bridge_.canWrite("jpg"));
  CWnd window(reinterpret_cast<HWND>(std::uintptr_t{0x1234}));
  AfxSetMainWnd(&window);
  EXPECT_TRUE(bridge_.loadCapabilities());
  AfxSetMainWnd(nullptr);
  EXPECT_EQ(codec.owner, window.m_hWnd);
  EXPECT_EQ(bridge_.formatCount, 3);
  EXPECT_EQ(bridge_.findFormat("JPG"), 0);
  EXPECT_EQ(bridge_.findFormat("Psd"), 1);
  EXPECT_EQ(bridge_.findFormat("LongName"), 2);
  for (const char* unknown : {"longnam", "longname\x01", "jp", "jpgx", ""})
    EXPECT_EQ(bridge_.findFormat(unknown), -1) << unknown;
  EXPECT_TRUE(bridge_.canWrite("jPg"));
  EXPECT_FALSE(bridge_.canWrite("psd"));
  EXPECT_FALSE(bridge_.canWrite("gif"));
}

TEST_F(CodecBridge, BoundsTheFormatCount) {
  const std::tuple<short, bool, short> cases[] = {
      {30, true, 25}, {25, true, 25}, {0, false, 0}, {-1, false, 0}, {-32768, false, 0}};
  codec.formats.resize(25, {"x", true});
  for (const auto& [reported, loaded, count] : cases) {
    codec.count = reported;
    EXPECT_EQ(bridge_.loadCapabilities(), loaded);
    EXPECT_EQ(bridge_.formatCount, count);
  }
  codec.count = 2;
  for (const auto& [kind, n] : {std::pair{PlatformCall::allocate, 1}, {PlatformCall::lock, 2}}) {
    exifkeep::clearFailures();
    exifkeep::failCall(kind, n);  // the codec's own lock is the first
    EXPECT_FALSE(bridge_.loadCapabilities());
    EXPECT_EQ(bridge_.formatCount, 0);
  }
}

TEST_F(CodecBridge, LoadsPixelsPaletteAndResolution) {
  for (bool givesPalette : {false, true}) {
    codec.givesPalette = givesPalette;
    const auto image = bridge_.loadImageFile("a.any");  // needs no capabilities
    ASSERT_TRUE(image);
    EXPECT_EQ(image->GetImageType(), PRaster::type8Bit);
    EXPECT_EQ(std::tuple(image->width(), image->height()), std::tuple(3u, 2u));
    EXPECT_EQ(std::tuple(image->GetDpmX(), image->GetDpmY()), std::tuple(2835u, 3937u));
    EXPECT_EQ(image->GetPixel(0, 1), 42u);
    EXPECT_EQ(image->palette()[0].rgbBlue, givesPalette ? 30 : 0);
    EXPECT_EQ(codec.progressResult, 0);
  }
}

TEST_F(CodecBridge, LoadsNothingFromAFailingCodec) {
  codec.givesPalette = true;
  EXPECT_FALSE(bridge_.loadImageFile(""));
  EXPECT_FALSE(bridge_.loadImageFile("name"));
  exifkeep::failCall(PlatformCall::codec, 1);
  EXPECT_FALSE(bridge_.loadImageFile("a.jpg"));
  codec.readsPixels = false;
  EXPECT_FALSE(bridge_.loadImageFile("a.jpg"));
  codec.readsPixels = true;
  const std::tuple<int, int, int> refused[] = {
      {0, 2, 8}, {3, -2, 8}, {-1, -1, 24}, {3, 2, 16}, {1 << 30, 1 << 30, 24}};
  for (const auto& [width, height, bits] : refused) {
    std::tie(codec.width, codec.height, codec.bits) = std::tie(width, height, bits);
    EXPECT_FALSE(bridge_.loadImageFile("a.jpg"));
  }
}

TEST_F(CodecBridge, SavesUnderWritableNamesOnly) {
  PRaster image;
  image.CreateImage(PRaster::type8Bit, 3, 2);
  EXPECT_FALSE(bridge_.saveImageFile("a.jpg", image));  // no capabilities: one box
  EXPECT_EQ(boxes, 1);
  ASSERT_TRUE(bridge_.loadCapabilities());
  int shown = 1;
  for (const char* name : {"a.psd", "a.gif", "jpg", "d.jpg/a", ""}) {
    EXPECT_FALSE(bridge_.saveImageFile(name, image)) << name;
    EXPECT_EQ(boxes, ++shown);
  }
  EXPECT_TRUE(codec.saved.empty());
  EXPECT_TRUE(bridge_.saveImageFile("a.b.JPG", image));
  EXPECT_EQ(codec.progressResult, 0);
  codec.saves = false;
  EXPECT_FALSE(bridge_.saveImageFile("c.jpg", image));
  EXPECT_EQ(codec.saved, (std::vector<std::string>{"a.b.JPG", "c.jpg"}));
  EXPECT_EQ(boxes, shown);
}

}  // namespace

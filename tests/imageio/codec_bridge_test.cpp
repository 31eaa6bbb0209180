// The codec bridge over a codec of this test's own: the five functions below take the place of the
// real ones when the program is linked.
#include "imageio/image_codec_bridge.h"

#include <gtest/gtest.h>
#include <pxcodec32.h>

#include <cstring>
#include <string>
#include <vector>

#include "failure_switch.h"

namespace {

struct FakeCodec {
  std::vector<std::pair<std::string, bool>> formats = {{"jpg", true}, {"psd", false}};
  short count = 2;
  int width = 3, height = 2, bits = 8;
  bool givesPalette = true, readsHeader = true, readsPixels = true, saves = true;
  HWND owner = nullptr;
  std::vector<std::string> saved;
  int progressResult = -1;
} codec;

}  // namespace

short AllGetReadWriteCaps(HWND owner, HGLOBAL block) {
  codec.owner = owner;
  EXPECT_EQ(GlobalSize(block), 1300u);
  char* record = static_cast<char*>(GlobalLock(block));
  for (const auto& [extension, writable] : codec.formats) {
    std::memset(record, 0xEE, 52);
    std::memcpy(record, extension.c_str(), std::min<std::size_t>(8, extension.size() + 1));
    const int flags[2] = {1, writable};
    std::memcpy(record + 8, flags, 8);
    record += 52;
  }
  GlobalUnlock(block);
  return codec.count;
}

int AllReadHeader(const char*, BITMAPINFOHEADER* header) {
  *header = {};
  header->biSize = sizeof *header;
  header->biWidth = codec.width;
  header->biHeight = codec.height;
  header->biPlanes = 1;
  header->biBitCount = static_cast<WORD>(codec.bits);
  header->biXPelsPerMeter = 2835;
  header->biYPelsPerMeter = 3937;
  header->biClrUsed = 2;
  return codec.readsHeader;
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

using exifkeep::ImageCodecBridge;

int boxes = 0;
int countBox(void*, const char* text, UINT type) {
  EXPECT_STRNE(text, "");
  EXPECT_EQ(type, MB_OK);
  ++boxes;
  return IDOK;
}

class CodecBridge : public testing::Test {
 protected:
  CodecBridge() {
    codec = {};
    boxes = 0;
    AfxSetMessageBoxHandler(countBox, nullptr);
  }
  ~CodecBridge() override {
    AfxSetMessageBoxHandler(nullptr, nullptr);
    EXPECT_EQ(exifkeep::livePalettes(), palettes_);
    EXPECT_EQ(exifkeep::liveBlocks(), blocks_);
  }

  ImageCodecBridge bridge_;

 private:
  const int palettes_ = exifkeep::livePalettes(), blocks_ = exifkeep::liveBlocks();
};

TEST_F(CodecBridge, FindsFormatsWhateverTheirCase) {
  // The last name fills its field without a NUL; what follows the field is no part of it.
  codec.formats.push_back({"longname", true});
  codec.count = 3;
  EXPECT_FALSE(bridge_.canWrite("jpg"));
  CWnd window(reinterpret_cast<HWND>(std::uintptr_t{0x1234}));
  AfxSetMainWnd(&window);
  EXPECT_TRUE(bridge_.loadCapabilities());
  AfxSetMainWnd(nullptr);
  EXPECT_EQ(codec.owner, window.m_hWnd);
  const std::pair<const char*, int> cases[] = {
      {"JPG", 0},           {"Psd", 1}, {"LongName", 2}, {"longnam", -1},
      {"longname\x01", -1}, {"jp", -1}, {"jpgx", -1},    {"", -1}};
  for (const auto& [name, index] : cases) {
    EXPECT_EQ(bridge_.findFormat(name), index) << name;
    EXPECT_EQ(bridge_.canWrite(name), index == 0 || index == 2) << name;
  }
}

TEST_F(CodecBridge, BoundsTheFormatCount) {
  codec.formats.resize(25, {"x", true});
  for (const auto& [reported, count] : {std::pair{30, 25}, {25, 25}, {0, 0}, {-32768, 0}}) {
    codec.count = static_cast<short>(reported);
    EXPECT_EQ(bridge_.loadCapabilities(), count > 0);
    EXPECT_EQ(bridge_.formatCount, count);
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
  EXPECT_FALSE(bridge_.loadImageFile(""));
  EXPECT_FALSE(bridge_.loadImageFile("name"));
  for (bool* works : {&codec.readsHeader, &codec.readsPixels}) {
    *works = false;
    EXPECT_FALSE(bridge_.loadImageFile("a.jpg"));
    *works = true;
  }
  const std::tuple<int, int, int> refused[] = {
      {0, 2, 8}, {3, -2, 8}, {-1, -1, 24}, {3, 2, 16}, {1 << 30, 1 << 30, 24}};
  for (const auto& size : refused) {
    std::tie(codec.width, codec.height, codec.bits) = size;
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
  for (const char* name : {"a.psd", "a.gif", "a.", "jpg", "d.jpg/a", ""}) {
    EXPECT_FALSE(bridge_.saveImageFile(name, image)) << name;
    EXPECT_EQ(boxes, ++shown);
  }
  EXPECT_TRUE(bridge_.saveImageFile("a.b.JPG", image));
  EXPECT_EQ(codec.progressResult, 0);
  codec.saves = false;
  EXPECT_FALSE(bridge_.saveImageFile("c.jpg", image));
  EXPECT_EQ(codec.saved, (std::vector<std::string>{"a.b.JPG", "c.jpg"}));
  EXPECT_EQ(boxes, shown);
}

}  // namespace

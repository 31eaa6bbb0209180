// The codec bridge's list of formats: this test's own, since the linker's option --wrap leads the
// bridge's call to the function below.
#include "imageio/image_codec_bridge.h"

#include <gtest/gtest.h>
#include <pxcodec32.h>

#include <cstring>
#include <string>
#include <vector>

#include "failure_switch.h"

namespace {

std::vector<std::pair<std::string, bool>> formats;  // extension, writable
short formatCount = 0;

}  // namespace

extern "C" short __wrap_AllGetReadWriteCaps(HWND, HGLOBAL block) {
  char* record = static_cast<char*>(GlobalLock(block));
  for (const auto& [extension, writable] : formats) {
    std::memset(record, 0xEE, 52);
    std::memcpy(record, extension.c_str(), std::min<size_t>(8, extension.size() + 1));
    const int flags[2] = {1, writable};
    std::memcpy(record + 8, flags, 8);
    record += 52;
  }
  GlobalUnlock(block);
  return formatCount;
}

namespace {

TEST(CodecBridge, TakesTheCodecsFormatsAsTheyAre) {
  // The last name fills its field without a NUL; what follows the field is no part of it.
  formats = {{"jpg", true}, {"psd", false}, {"longname", true}};
  formatCount = 3;
  exifkeep::ImageCodecBridge bridge;
  EXPECT_FALSE(bridge.canWrite("jpg"));  // nothing is known yet
  EXPECT_TRUE(bridge.loadCapabilities());
  const std::pair<const char*, int> cases[] = {{"JPG", 0},           {"Psd", 1}, {"LongName", 2},
                                               {"longname\x01", -1}, {"jp", -1}, {"", -1}};
  for (const auto& [name, index] : cases) {
    EXPECT_EQ(bridge.findFormat(name), index) << name;
    EXPECT_EQ(bridge.canWrite(name), index == 0 || index == 2) << name;
  }
  formats.resize(25, {"x", true});
  for (const auto& [reported, count] : {std::pair{30, 25}, {0, 0}, {-32768, 0}}) {
    formatCount = static_cast<short>(reported);
    EXPECT_EQ(bridge.loadCapabilities(), count > 0);
    EXPECT_EQ(bridge.formatCount, count);
  }
  EXPECT_EQ(exifkeep::liveBlocks(), 0);
}

}  // namespace

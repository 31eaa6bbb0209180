// Global memory, 8-bit comparison, the clock.
#include <failure_switch.h>
#include <gtest/gtest.h>
#include <time.h>
#include <windows.h>

#include <algorithm>

namespace exifkeep::test {
namespace {

TEST(GlobalMemory, BlocksAreClearedLockedAndFreed) {
  const HGLOBAL block = GlobalAlloc(GHND, 65536);
  auto* bytes = static_cast<unsigned char*>(GlobalLock(block));
  ASSERT_NE(bytes, nullptr);
  EXPECT_TRUE(std::all_of(bytes, bytes + 65536, [](unsigned char byte) { return byte == 0; }));
  std::fill_n(bytes, 65536, 0xFF);
  EXPECT_EQ(GlobalLock(block), bytes);
  EXPECT_TRUE(GlobalUnlock(block));
  EXPECT_FALSE(GlobalUnlock(block));
  EXPECT_EQ(GlobalSize(block), 65536u);
  failCall(PlatformCall::lock, 1);
  EXPECT_EQ(GlobalLock(block), nullptr);
  EXPECT_EQ(liveBlocks(), 1);
  EXPECT_EQ(GlobalFree(block), nullptr);
  EXPECT_EQ(liveBlocks(), 0);
}

TEST(GlobalMemory, WhatCannotBeHadIsNull) {
  EXPECT_EQ(GlobalAlloc(GHND, SIZE_MAX), nullptr);
  EXPECT_EQ(GlobalAlloc(GMEM_ZEROINIT, 16), nullptr) << "fixed blocks do not exist";
  failCall(PlatformCall::allocate, 1);
  EXPECT_EQ(GlobalAlloc(GHND, 16), nullptr);
  const HGLOBAL empty = GlobalAlloc(GMEM_MOVEABLE, 0);
  EXPECT_NE(empty, nullptr);
  EXPECT_EQ(GlobalLock(empty), nullptr);
  GlobalFree(empty);
}

int sign(int number) {
  return (number > 0) - (number < 0);
}

TEST(Strings, CompareInAnyCaseByAsciiOnly) {
  const struct {
    const char* left;
    const char* right;
    int expected;
  } cases[] = {{"JPG", "jpg", 0},    {"jpg", "JPEG", 1}, {"tif", "TIFF", -1}, {"", "", 0},
               {"\xC4", "\xE4", -1}, {"z", "\x80", -1},  {"[", "A", -1}};
  for (const auto& c : cases) {
    EXPECT_EQ(sign(lstrcmpiA(c.left, c.right)), c.expected) << c.left << " " << c.right;
  }
}

TEST(LocalTime, IsTheWallClock) {
  SYSTEMTIME time;
  const time_t before = ::time(nullptr);
  GetLocalTime(&time);
  tm parts = {time.wSecond,
              time.wMinute,
              time.wHour,
              time.wDay,
              time.wMonth - 1,
              time.wYear - 1900,
              0,
              0,
              -1,
              0,
              nullptr};
  const time_t told = mktime(&parts);
  EXPECT_TRUE(before <= told && told <= ::time(nullptr));
}

}  // namespace
}  // namespace exifkeep::test

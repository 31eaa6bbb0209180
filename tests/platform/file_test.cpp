// SPDX-License-Identifier: MIT
#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <algorithm>
#include <random>

#include "failure_switch.h"
#include "platform/scratch.h"

namespace exifkeep::test {
namespace {

constexpr DWORD readWrite = GENERIC_READ | GENERIC_WRITE;

HANDLE openPath(const std::string& path, DWORD access, DWORD disposition = OPEN_EXISTING) {
  return CreateFileA(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, disposition,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

using FileTest = ScratchTest;

OVERLAPPED placeAt(uint64_t at) {
  OVERLAPPED place = {};
  place.Offset = static_cast<DWORD>(at);
  place.OffsetHigh = static_cast<DWORD>(at >> 32);
  return place;
}

// Random reads and writes of a file of 50000 bytes, compared with a string. Each begins where the
// last one ended, near it or elsewhere.
void useAtRandom(HANDLE file, std::string& model, std::mt19937& random) {
  size_t at = 0;
  for (int step = 0; step < 20000; ++step) {
    const size_t count = 1 + random() % (random() % 6 == 0 ? 40000 : 40);
    std::string bytes(count, static_cast<char>(random()));
    if (random() % 5 == 0)
      at =
          random() % 4 == 0 ? at + random() % 20 : random() % (random() % 9 ? 30000 : model.size());
    OVERLAPPED place = placeAt(at);
    DWORD done = 0;
    if (random() % 4 == 0) {
      ASSERT_TRUE(WriteFile(file, bytes.data(), static_cast<DWORD>(count), &done, &place));
      ASSERT_EQ(done, count);
      model.resize(std::max(model.size(), at + count));
      model.replace(at, count, bytes);
    } else {
      ASSERT_TRUE(ReadFile(file, bytes.data(), static_cast<DWORD>(count), &done, &place));
      ASSERT_TRUE(bytes.substr(0, done) == (at < model.size() ? model.substr(at, count) : ""));
    }
    at += done;
  }
}

TEST_F(FileTest, AgreesWithAModelUnderRandomUse) {
  std::mt19937 random(1);
  std::string model(50000, 'x');
  writeFile(path("file"), model);
  const HANDLE file = openPath(path("file"), readWrite);
  useAtRandom(file, model, random);
  EXPECT_TRUE(CloseHandle(file));
  EXPECT_TRUE(readFile(path("file")) == model);
  EXPECT_EQ(openHandles(), 0);
}

TEST_F(FileTest, WritesOnlyRegularFilesAndKnowsNoOtherSize) {
  ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
  ASSERT_EQ(symlink("fifo", path("link").c_str()), 0);
  for (const std::string& name : {path("fifo"), path("link"), path("."), path("missing"),
                                  std::string("/dev/zero"), std::string()})
    for (const DWORD access : {GENERIC_READ, GENERIC_WRITE, readWrite}) {
      const HANDLE file = openPath(name, access);
      LARGE_INTEGER size;
      EXPECT_FALSE(GetFileSizeEx(file, &size)) << name;
      EXPECT_TRUE(access == GENERIC_READ || file == INVALID_HANDLE_VALUE) << name;
      CloseHandle(file);
    }
  EXPECT_EQ(names(), (std::set<std::string>{"fifo", "link"}));
}

TEST_F(FileTest, KeepsItsFirstSizeWhileOthersAppend) {
  writeFile(path("file"), "old");
  const HANDLE file = openPath(path("file"), GENERIC_READ);
  LARGE_INTEGER size;
  EXPECT_TRUE(GetFileSizeEx(file, &size));
  writeFile(path("file"), "old and new");
  char bytes[16];
  DWORD first = 0, rest = 0;
  EXPECT_TRUE(ReadFile(file, bytes, 2, &first, nullptr));
  EXPECT_TRUE(ReadFile(file, bytes + first, 10, &rest, nullptr));
  EXPECT_EQ(std::string(bytes, first + rest), "old");
  CloseHandle(file);
}

TEST_F(FileTest, PositionsBeyond32BitsAndFilesTruncatedMeanwhile) {
  constexpr int64_t size = (INT64_C(1) << 32) + 5;
  writeFile(path("file"), "");
  ASSERT_EQ(truncate(path("file").c_str(), size), 0);
  const HANDLE file = openPath(path("file"), GENERIC_READ);
  LARGE_INTEGER found;
  EXPECT_TRUE(GetFileSizeEx(file, &found));
  EXPECT_EQ(found.QuadPart, size);
  DWORD done = 0;
  std::string buffer(60000, '#');
  OVERLAPPED nearEnd = placeAt(size - 2), start = {}, impossible = placeAt(UINT64_MAX);
  EXPECT_TRUE(ReadFile(file, buffer.data(), 4, &done, &nearEnd));
  EXPECT_EQ(done, 2u);
  EXPECT_FALSE(ReadFile(file, buffer.data(), 4, &done, &impossible));

  ASSERT_EQ(truncate(path("file").c_str(), 30000), 0);
  EXPECT_TRUE(ReadFile(file, buffer.data(), 60000, &done, &start));
  EXPECT_EQ(done, 30000u);
  CloseHandle(file);
}

std::string temporaryPath() {
  char buffer[256] = "";
  EXPECT_NE(GetTempPathA(sizeof buffer, buffer), 0u);
  return buffer;
}

using PathTest = ScratchTest;

TEST_F(PathTest, AMoveReplacesOnlyOnRequest) {
  const std::string a = path("a"), b = path("b");
  writeFile(a, "new");
  writeFile(b, "old");
  EXPECT_FALSE(MoveFileExA(a.c_str(), b.c_str(), 0));
  EXPECT_EQ(readFile(b), "old");
  EXPECT_TRUE(MoveFileExA(a.c_str(), b.c_str(), MOVEFILE_REPLACE_EXISTING));
  EXPECT_EQ(readFile(b), "new");
  EXPECT_FALSE(DeleteFileA(path(".").c_str()));
}

TEST_F(PathTest, TheFinalPathHasNoLinks) {
  std::filesystem::create_directory(path("folder"));
  writeFile(path("folder/file"), "");
  ASSERT_EQ(symlink("folder", path("link").c_str()), 0);
  ASSERT_EQ(symlink("link/file", path("other").c_str()), 0);
  char found[4096];
  for (const bool isGone : {false, true}) {
    const HANDLE file = CreateFileA(path("other").c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (isGone) DeleteFileA(path("folder/file").c_str());
    const DWORD length = GetFinalPathNameByHandleA(file, found, sizeof found, FILE_NAME_NORMALIZED);
    EXPECT_EQ(std::string(found, length),
              isGone ? "" : std::filesystem::canonical(path("folder/file")).string());
    CloseHandle(file);
  }
  EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST_F(PathTest, TheTemporaryFolderIsUsable) {
  const std::string deep = path(std::string(200, 'd'));
  std::filesystem::create_directory(deep);
  writeFile(path("file"), "");
  for (const std::string& bad : {deep, path("file"), path("missing"), std::string("relative")}) {
    setenv("TMPDIR", bad.c_str(), 1);
    EXPECT_EQ(temporaryPath(), "/tmp/") << bad;
  }
  setenv("TMPDIR", path("").c_str(), 1);
  EXPECT_EQ(temporaryPath(), path("") + "/");
  char buffer[2] = "#";
  EXPECT_EQ(GetTempPathA(2, buffer), path("").size() + 2);
  EXPECT_STREQ(buffer, "#");

  EXPECT_TRUE(CreateDirectoryA(path("own").c_str(), nullptr));
  EXPECT_FALSE(CreateDirectoryA(path("own").c_str(), nullptr));
  EXPECT_EQ(GetLastError(), ERROR_FILE_EXISTS);
  EXPECT_EQ(std::filesystem::status(path("own")).permissions(), std::filesystem::perms{0700});
  EXPECT_TRUE(RemoveDirectoryA(path("own").c_str()));
}

}  // namespace
}  // namespace exifkeep::test

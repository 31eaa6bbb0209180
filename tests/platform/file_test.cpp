// File handles: the window against a plain model, what opens and what does not, 64-bit positions.
#include <failure_switch.h>
#include <platform/scratch.h>
#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <random>

namespace exifkeep::test {
namespace {

constexpr DWORD readWrite = GENERIC_READ | GENERIC_WRITE;

HANDLE openPath(const std::string& path, DWORD access, DWORD disposition = OPEN_EXISTING) {
  return CreateFileA(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, disposition,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

using FileTest = ScratchTest;

// Random reads, writes and moves on a file of 50000 bytes, beside a string and a position.
void useAtRandom(HANDLE file, std::string& model, std::mt19937& random) {
  size_t at = 0;
  for (int step = 0; step < 20000; ++step) {
    const size_t count = 1 + random() % (random() % 6 == 0 ? 40000 : 40);
    std::string bytes(count, static_cast<char>(random()));
    DWORD done = 0;
    switch (random() % 10) {
      case 0:
      case 1:
        ASSERT_TRUE(WriteFile(file, bytes.data(), static_cast<DWORD>(count), &done, nullptr));
        ASSERT_EQ(done, count);
        model.resize(std::max(model.size(), at + count));
        model.replace(at, count, bytes);
        at += count;
        break;
      case 2:
      case 3: {
        const DWORD origin = random() % 3;
        const size_t base = std::array{size_t{0}, at, model.size()}[origin];
        at = random() % 4 == 0 ? base + random() % 20
                               : random() % (random() % 9 ? 30000 : model.size());
        const LONG distance = static_cast<LONG>(at) - static_cast<LONG>(base);
        ASSERT_EQ(SetFilePointer(file, distance, nullptr, origin), at);
        break;
      }
      default:
        ASSERT_TRUE(ReadFile(file, bytes.data(), static_cast<DWORD>(count), &done, nullptr));
        ASSERT_TRUE(bytes.substr(0, done) == (at < model.size() ? model.substr(at, count) : ""));
        at += done;
    }
  }
}

TEST_F(FileTest, AgreesWithAModelUnderRandomUse) {
  std::mt19937 random(1);
  std::string model(50000, 'x');
  writeFile(path("file"), model);
  const HANDLE file = openPath(path("file"), readWrite);
  useAtRandom(file, model, random);
  EXPECT_EQ(GetFileSize(file, nullptr), model.size());
  EXPECT_TRUE(CloseHandle(file));
  EXPECT_TRUE(readFile(path("file")) == model);
  EXPECT_EQ(openHandles(), 0);
}

TEST_F(FileTest, RefusesAtOnceWhatIsNoRegularFile) {
  ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
  ASSERT_EQ(symlink("fifo", path("link").c_str()), 0);
  for (const std::string& name : {path("fifo"), path("link"), path("."), path("missing"),
                                  std::string("/dev/zero"), std::string()})
    for (const DWORD access : {GENERIC_READ, GENERIC_WRITE, readWrite})
      EXPECT_EQ(openPath(name, access), INVALID_HANDLE_VALUE) << name;
  EXPECT_EQ(openPath(path("fifo"), readWrite, CREATE_ALWAYS), INVALID_HANDLE_VALUE);
  EXPECT_EQ(names(), (std::set<std::string>{"fifo", "link"}));
}

TEST_F(FileTest, KeepsTheSizeOfTheOpeningWhileOthersAppend) {
  writeFile(path("file"), "old");
  const HANDLE file = openPath(path("file"), GENERIC_READ);
  writeFile(path("file"), "old and new");
  char bytes[16];
  DWORD first = 0, rest = 0;
  EXPECT_TRUE(ReadFile(file, bytes, 2, &first, nullptr));
  EXPECT_TRUE(ReadFile(file, bytes + first, 10, &rest, nullptr));
  EXPECT_EQ(std::string(bytes, first + rest), "old");
  CloseHandle(file);
}

TEST_F(FileTest, PositionsBeyond32BitsAndFilesCutMeanwhile) {
  constexpr int64_t size = (INT64_C(1) << 32) + 5;
  writeFile(path("file"), "");
  ASSERT_EQ(truncate(path("file").c_str(), size), 0);
  const HANDLE file = openPath(path("file"), GENERIC_READ);
  DWORD high = 0, done = 0;
  EXPECT_EQ(GetFileSize(file, &high), 5u);
  EXPECT_EQ(high, 1u);
  LONG distanceHigh = 1;
  EXPECT_EQ(SetFilePointer(file, 3, &distanceHigh, FILE_BEGIN), 3u);
  std::string buffer(60000, '#');
  EXPECT_TRUE(ReadFile(file, buffer.data(), 4, &done, nullptr));
  EXPECT_EQ(done, 2u);

  // Moves that fail leave the position where it was.
  EXPECT_EQ(SetFilePointer(file, -1, nullptr, FILE_BEGIN), INVALID_SET_FILE_POINTER);
  LARGE_INTEGER distance, position;
  distance.QuadPart = INT64_MAX;
  EXPECT_FALSE(SetFilePointerEx(file, distance, nullptr, FILE_END));
  EXPECT_TRUE(SetFilePointerEx(file, {}, &position, FILE_CURRENT));
  EXPECT_EQ(position.QuadPart, size);

  EXPECT_EQ(SetFilePointer(file, 0, nullptr, FILE_BEGIN), 0u);
  ASSERT_EQ(truncate(path("file").c_str(), 30000), 0);
  EXPECT_TRUE(ReadFile(file, buffer.data(), 60000, &done, nullptr));
  EXPECT_EQ(done, 30000u);
  CloseHandle(file);
}

}  // namespace
}  // namespace exifkeep::test

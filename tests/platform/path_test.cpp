// Names: moving, attributes, and the thread's temporary directory.
#include <platform/scratch.h>
#include <unistd.h>
#include <windows.h>

#include <thread>

namespace exifkeep::test {
namespace {

std::string temporaryPath() {
  char buffer[256] = "";
  EXPECT_NE(GetTempPathA(sizeof buffer, buffer), 0u);
  return buffer;
}

using PathTest = ScratchTest;

TEST_F(PathTest, OnlyAMoveThatIsToldSoReplaces) {
  const std::string a = path("a"), b = path("b");
  writeFile(a, "new");
  writeFile(b, "old");
  EXPECT_FALSE(MoveFileExA(a.c_str(), b.c_str(), 0));
  EXPECT_EQ(readFile(b), "old");
  EXPECT_TRUE(MoveFileExA(a.c_str(), b.c_str(), MOVEFILE_REPLACE_EXISTING));
  EXPECT_EQ(readFile(b), "new");
  EXPECT_FALSE(DeleteFileA(path(".").c_str()));
}

TEST_F(PathTest, AttributesTellWhatLiesThere) {
  writeFile(path("file"), "");
  ASSERT_EQ(symlink("nowhere", path("dangling").c_str()), 0);
  const std::pair<const char*, DWORD> cases[] = {{"file", FILE_ATTRIBUTE_NORMAL},
                                                 {"", FILE_ATTRIBUTE_DIRECTORY},
                                                 {"dangling", FILE_ATTRIBUTE_REPARSE_POINT},
                                                 {"missing", INVALID_FILE_ATTRIBUTES}};
  for (const auto& [name, expected] : cases)
    EXPECT_EQ(GetFileAttributesA(path(name).c_str()), expected) << name;
}

TEST_F(PathTest, TheTemporaryDirectoryIsTheThreadsOwnAndMadeAgainWhenGone) {
  const std::string mine = temporaryPath();
  EXPECT_EQ(std::filesystem::status(mine).permissions(), std::filesystem::perms{0700});
  char buffer[2] = "#";
  EXPECT_EQ(GetTempPathA(2, buffer), mine.size() + 1);
  EXPECT_STREQ(buffer, "#");
  setenv("TMPDIR", path("").c_str(), 1);
  std::thread([&] {
    std::filesystem::remove(temporaryPath());
    writeFile(temporaryPath() + "left", "behind");
    EXPECT_EQ(names().size(), 1u);
  }).join();
  EXPECT_TRUE(names().empty());
  // The path of one in here would not fit into the buffers that callers have.
  const std::string deep = path(std::string(230, 'd'));
  std::filesystem::create_directory(deep);
  setenv("TMPDIR", deep.c_str(), 1);
  std::thread([] { EXPECT_TRUE(temporaryPath().starts_with("/tmp/")); }).join();
  setenv("TMPDIR", "/tmp", 1);
  EXPECT_EQ(temporaryPath(), mine);
}

TEST_F(PathTest, AChildProcessLeavesItsParentsTemporaryDirectoryAlone) {
  const std::string mine = temporaryPath();
  writeFile(mine + "kept", "");
  EXPECT_EXIT(std::exit(temporaryPath() != mine ? 7 : 8), ::testing::ExitedWithCode(7), "");
  EXPECT_TRUE(std::filesystem::exists(mine + "kept"));
}

TEST_F(PathTest, TemporaryFilesArePrivateAndFollowNoLink) {
  const std::string file = temporaryPath() + "fixed-name.jpg";
  writeFile(path("victim"), "content");
  ASSERT_EQ(symlink(path("victim").c_str(), file.c_str()), 0);
  for (const DWORD disposition : {CREATE_NEW, CREATE_ALWAYS}) {
    const HANDLE made =
        CreateFileA(file.c_str(), GENERIC_WRITE, 0, nullptr, disposition, 0, nullptr);
    EXPECT_EQ(made != INVALID_HANDLE_VALUE, disposition == CREATE_ALWAYS);
    CloseHandle(made);
  }
  EXPECT_EQ(std::filesystem::symlink_status(file).permissions(), std::filesystem::perms{0600});
  EXPECT_EQ(readFile(path("victim")), "content");
  DeleteFileA(file.c_str());
}

}  // namespace
}  // namespace exifkeep::test

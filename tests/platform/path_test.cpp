// Names: deleting, moving, attributes, the thread's temporary directory, unique names.
#include <platform/scratch.h>
#include <sys/stat.h>
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

HANDLE create(const std::string& path, DWORD disposition) {
  return CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, disposition,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

mode_t modeOf(const std::string& path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

using PathTest = ScratchTest;

TEST_F(PathTest, MovesDeletesAndTellsAttributes) {
  const std::string a = path("a"), b = path("b"), dangling = path("dangling");
  writeFile(a, "a");
  writeFile(b, "b");
  EXPECT_FALSE(MoveFileExA(a.c_str(), b.c_str(), 0));
  EXPECT_EQ(readFile(b), "b");
  EXPECT_TRUE(MoveFileExA(a.c_str(), b.c_str(), MOVEFILE_REPLACE_EXISTING));
  EXPECT_EQ(readFile(b), "a");
  EXPECT_TRUE(MoveFileExA(b.c_str(), a.c_str(), MOVEFILE_WRITE_THROUGH));
  EXPECT_EQ(GetFileAttributesA(a.c_str()), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(GetFileAttributesA(b.c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetFileAttributesA(path("").c_str()), FILE_ATTRIBUTE_DIRECTORY);
  ASSERT_EQ(symlink("nowhere", dangling.c_str()), 0);
  EXPECT_EQ(GetFileAttributesA(dangling.c_str()), FILE_ATTRIBUTE_REPARSE_POINT);
  EXPECT_TRUE(DeleteFileA(a.c_str()));
  EXPECT_FALSE(DeleteFileA(a.c_str()));
  EXPECT_FALSE(DeleteFileA(path(".").c_str()));
}

TEST_F(PathTest, TheTemporaryDirectoryIsTheThreadsOwn) {
  const std::string mine = temporaryPath();
  EXPECT_EQ(mine.back(), '/');
  EXPECT_EQ(modeOf(mine.substr(0, mine.size() - 1)), 0700u);
  std::string theirs;
  std::thread([&] { writeFile((theirs = temporaryPath()) + "left", "behind"); }).join();
  EXPECT_NE(theirs, mine);
  EXPECT_FALSE(std::filesystem::exists(theirs));

  const DWORD needed = static_cast<DWORD>(mine.size() + 1);
  std::string buffer(needed, '#');
  EXPECT_EQ(GetTempPathA(needed - 1, buffer.data()), needed);
  EXPECT_EQ(buffer, std::string(needed, '#'));
  EXPECT_EQ(GetTempPathA(needed, buffer.data()), needed - 1);
  EXPECT_EQ(buffer.c_str(), mine);
}

TEST_F(PathTest, TheTemporaryDirectoryFollowsTmpdirAndIsMadeAgainWhenGone) {
  const char* variable = std::getenv("TMPDIR");
  const std::string before = variable != nullptr ? variable : "/tmp";
  setenv("TMPDIR", path("").c_str(), 1);
  std::thread([&] {
    const std::string first = temporaryPath();
    EXPECT_TRUE(first.starts_with(path("")));
    std::filesystem::remove(first);
    EXPECT_TRUE(std::filesystem::is_directory(temporaryPath()));
  }).join();
  setenv("TMPDIR", before.c_str(), 1);
  EXPECT_TRUE(names().empty());
}

TEST_F(PathTest, AChildProcessLeavesItsParentsTemporaryDirectoryAlone) {
  const std::string mine = temporaryPath();
  writeFile(mine + "kept", "");
  EXPECT_EXIT(std::exit(7), ::testing::ExitedWithCode(7), "");
  EXPECT_EXIT(std::exit(temporaryPath() != mine ? 7 : 8), ::testing::ExitedWithCode(7), "");
  EXPECT_TRUE(std::filesystem::exists(mine + "kept"));
}

TEST_F(PathTest, TemporaryFilesArePrivateAndFollowNoLink) {
  const std::string file = temporaryPath() + "fixed-name.jpg";
  writeFile(path("victim"), "content");
  ASSERT_EQ(symlink(path("victim").c_str(), file.c_str()), 0);
  EXPECT_EQ(create(file, CREATE_NEW), INVALID_HANDLE_VALUE);
  const HANDLE created = create(file, CREATE_ALWAYS);
  ASSERT_NE(created, INVALID_HANDLE_VALUE);
  EXPECT_TRUE(CloseHandle(created));
  EXPECT_EQ(create(file, CREATE_NEW), INVALID_HANDLE_VALUE);
  EXPECT_EQ(modeOf(file), 0600u);
  EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(file)));
  EXPECT_EQ(readFile(path("victim")), "content");
  EXPECT_TRUE(DeleteFileA(file.c_str()));
}

TEST_F(PathTest, UniqueNames) {
  char buffer[MAX_PATH];
  for (std::size_t count = 1; count <= 20; ++count) {
    ASSERT_NE(GetTempFileNameA(path("").c_str(), "ADOX", 0, buffer), 0u);
    EXPECT_EQ(names().size(), count);
  }
  for (const std::string& name : names()) {
    EXPECT_TRUE(name.starts_with("ADO") && name.ends_with(".tmp") && name.size() <= 12) << name;
  }
  EXPECT_EQ(GetTempFileNameA("dir", "ADO", 0x1A2B, buffer), 0x1A2Bu);
  EXPECT_STREQ(buffer, "dir/ADO1A2B.tmp");
  EXPECT_EQ(GetTempFileNameA(path("missing").c_str(), "ADO", 0, buffer), 0u);
  EXPECT_EQ(GetTempFileNameA(std::string(250, 'd').c_str(), "ADO", 1, buffer), 0u);
}

}  // namespace
}  // namespace exifkeep::test

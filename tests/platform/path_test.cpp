// Names: moving, attributes, the path behind links, and the temporary folder.
#include <unistd.h>
#include <windows.h>

#include "platform/scratch.h"

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
                                                 {"dangling", FILE_ATTRIBUTE_NORMAL},
                                                 {"missing", INVALID_FILE_ATTRIBUTES}};
  for (const auto& [name, expected] : cases)
    EXPECT_EQ(GetFileAttributesA(path(name).c_str()), expected) << name;
}

TEST_F(PathTest, ThePathOfAnOpenFileIsBehindAllLinks) {
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

TEST_F(PathTest, TheTemporaryFolderIsOneThatCanBeUsed) {
  const std::string deep = path(std::string(200, 'd'));
  std::filesystem::create_directory(deep);
  writeFile(path("file"), "");
  const std::string before = getenv("TMPDIR") ? getenv("TMPDIR") : "/tmp";
  for (const std::string& bad : {deep, path("file"), path("missing"), std::string("relative")}) {
    setenv("TMPDIR", bad.c_str(), 1);
    EXPECT_EQ(temporaryPath(), "/tmp/") << bad;
  }
  setenv("TMPDIR", path("").c_str(), 1);
  EXPECT_EQ(temporaryPath(), path("") + "/");
  char buffer[2] = "#";
  EXPECT_EQ(GetTempPathA(2, buffer), path("").size() + 2);
  EXPECT_STREQ(buffer, "#");
  setenv("TMPDIR", before.c_str(), 1);

  EXPECT_TRUE(CreateDirectoryA(path("own").c_str(), nullptr));
  EXPECT_FALSE(CreateDirectoryA(path("own").c_str(), nullptr));
  EXPECT_EQ(GetLastError(), ERROR_FILE_EXISTS);
  EXPECT_EQ(std::filesystem::status(path("own")).permissions(), std::filesystem::perms{0700});
  EXPECT_TRUE(RemoveDirectoryA(path("own").c_str()));
}

}  // namespace
}  // namespace exifkeep::test

// SPDX-License-Identifier: MIT
// Specific to Windows: files opened by other programs, attributes of replaced files, names in
// UTF-8, and the language of the thread.
#include <exifkeep/exifkeep.h>
#include <language.h>

#include <fstream>
#include <map>

#include "failures/saved_pictures.h"
#include "read/reading.h"

namespace exifkeep::test {
namespace {

// A file opened by another program.
class HeldOpen {
 public:
  HeldOpen(const std::string& path, DWORD access, DWORD share)
      : handle_(CreateFileA(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr)) {
    EXPECT_NE(handle_, INVALID_HANDLE_VALUE) << path;
  }
  ~HeldOpen() { CloseHandle(handle_); }
  HeldOpen(const HeldOpen&) = delete;
  HeldOpen& operator=(const HeldOpen&) = delete;

 private:
  HANDLE handle_;
};

class WindowsFiles : public SavedPictures {};

TEST_F(WindowsFiles, APictureThatAnotherProgramHoldsIsNotSavedOver) {
  PRaster image = makePicture(newWidth);
  for (const std::string& picture : {path("source.jpg"), path("source.tif")}) {
    for (const DWORD share : {0, FILE_SHARE_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              FILE_SHARE_READ | FILE_SHARE_DELETE}) {
      const HeldOpen held(picture, GENERIC_READ, share);
      EXPECT_EQ(SaveFile(picture.c_str(), picture.c_str(), &image, nullptr), 0) << share;
      EXPECT_EQ(SaveFile("", picture.c_str(), &image, nullptr), 0) << share;
    }
  }
  EXPECT_EQ(files(), originals_);
}

// As opened by viewers and indexers.
TEST_F(WindowsFiles, APictureThatIsSharedIsReadAndReplaced) {
  PRaster image = makePicture(newWidth);
  for (const std::string& picture : {path("source.jpg"), path("source.tif")}) {
    const HeldOpen held(picture, GENERIC_READ,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    EXPECT_EQ(IsExifFile(picture.c_str()), 1);
    EXPECT_EQ(SaveFile(picture.c_str(), picture.c_str(), &image, nullptr), 1);
    EXPECT_EQ(widthOf(picture), newWidth);
  }
}

// Wine's does not.
bool replacingKeepsAttributes(const std::string& old, const std::string& replacement) {
  writeFile(old, "old");
  writeFile(replacement, "new");
  EXPECT_TRUE(SetFileAttributesA(old.c_str(), FILE_ATTRIBUTE_HIDDEN));
  EXPECT_TRUE(ReplaceFileA(old.c_str(), replacement.c_str(), nullptr, 0, nullptr, nullptr));
  const bool isHidden = (GetFileAttributesA(old.c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0;
  EXPECT_TRUE(DeleteFileA(old.c_str()));
  return isHidden;
}

TEST_F(WindowsFiles, AttributesStay) {
  const bool isKept = replacingKeepsAttributes(path("old"), path("new"));
  PRaster image = makePicture(newWidth);
  ASSERT_TRUE(SetFileAttributesA(path("source.jpg").c_str(), FILE_ATTRIBUTE_HIDDEN));
  EXPECT_EQ(SaveFile(path("source.jpg").c_str(), path("source.jpg").c_str(), &image, nullptr), 1);
  EXPECT_EQ(widthOf(path("source.jpg")), newWidth);
  EXPECT_EQ((GetFileAttributesA(path("source.jpg").c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0, isKept);
  ASSERT_TRUE(SetFileAttributesA(path("source.jpg").c_str(), FILE_ATTRIBUTE_READONLY));
  // To root, Wine opens read-only files as well.
  const HANDLE opened =
      CreateFileA(path("source.jpg").c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  if (opened != INVALID_HANDLE_VALUE) CloseHandle(opened);
  EXPECT_EQ(SaveFile("", path("source.jpg").c_str(), &image, nullptr),
            opened != INVALID_HANDLE_VALUE);
  EXPECT_EQ(SetFileAttributesA(path("source.jpg").c_str(), FILE_ATTRIBUTE_NORMAL), TRUE);
  EXPECT_EQ(files().size(), originals_.size());
}

// Both separators and all characters: the code page of this process is UTF-8.
TEST_F(WindowsFiles, NamesOfAllKindsWork) {
  ASSERT_EQ(GetACP(), UINT{CP_UTF8});
  std::filesystem::create_directory(path("folder"));
  for (std::string name : {"übung.jpg", "日本.tif", "folder/日本.jpg", "folder\\ß.tif"}) {
    name = path(name);
    PRaster image = makePicture(newWidth);
    ASSERT_EQ(SaveFile("", name.c_str(), &image, nullptr), 1) << name;
    EXPECT_EQ(AddAudio(name.data(), "a program", &image, nullptr), 1) << name;
    EXPECT_EQ(IsExifFile(name.c_str()), 1) << name;
    EXPECT_FALSE(itemsOf(name).empty()) << name;
    EXPECT_EQ(widthOf(name), newWidth) << name;
  }
  EXPECT_EQ(files().size(), originals_.size() + 5);
}

// Wine has no language of a thread, but one of the process.
void setUserLanguage(LANGID language) {
  SetThreadUILanguage(language);
  const HMODULE system = GetModuleHandleA("ntdll.dll");
  if (!GetProcAddress(system, "wine_get_version")) return;
  const auto set = reinterpret_cast<void*>(GetProcAddress(system, "NtSetDefaultUILanguage"));
  reinterpret_cast<LONG(WINAPI*)(LANGID)>(set)(language);
}

TEST(WindowsLanguage, IsTheThreadsUnlessTheEnvironmentNamesOne) {
  const std::pair<WORD, LANGID> cases[] = {
      {MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN_AUSTRIAN), 1031},
      {MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_HONGKONG), 1028},
      {MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_SINGAPORE), 2052},
      {MAKELANGID(LANG_PORTUGUESE, SUBLANG_PORTUGUESE_BRAZILIAN), 2070},
      {MAKELANGID(LANG_RUSSIAN, SUBLANG_DEFAULT), 1033}};
  for (const auto& [thread, expected] : cases) {
    setUserLanguage(thread);
    if (GetThreadUILanguage() != thread) GTEST_SKIP() << "the system has this language only";
    setLocaleVariables({});
    EXPECT_EQ(userLanguage(), expected) << thread;
    setLocaleVariables({{"LANGUAGE", "it"}});
    EXPECT_EQ(userLanguage(), 1040) << thread;
  }
}

}  // namespace
}  // namespace exifkeep::test

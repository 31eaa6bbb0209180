// SPDX-License-Identifier: MIT
// A directory for each test, reading and writing of files, and the locale variables of the
// environment.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>

namespace exifkeep::test {

// Windows has other functions for the environment, and creating links usually needs privileges.
#if defined(_WIN32)
inline constexpr const char* temporaryVariable = "TMP";
inline void setVariable(const char* name, const std::string& value) {
  _putenv_s(name, value.c_str());
}
inline void unsetVariable(const char* name) {
  _putenv_s(name, "");
}
inline void makeLinkToNowhere(const std::string& path) {
  std::ofstream file(path);
}
#else
inline constexpr const char* temporaryVariable = "TMPDIR";
inline void setVariable(const char* name, const std::string& value) {
  setenv(name, value.c_str(), 1);
}
inline void unsetVariable(const char* name) {
  unsetenv(name);
}
inline void makeLinkToNowhere(const std::string& path) {
  std::filesystem::create_symlink("nowhere", path);
}
#endif

// A test in its own directory, which is deleted afterwards, as is its folder for temporary files,
// which must be empty.
class ScratchTest : public ::testing::Test {
 protected:
  ScratchTest() {
    static std::atomic<unsigned> made{0};
    if (const char* before = std::getenv(temporaryVariable)) before_ = before;
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    do {
      base_ = std::filesystem::temp_directory_path() /
              ("test-" + std::to_string(now) + "-" + std::to_string(++made));
    } while (!std::filesystem::create_directory(base_));
    for (const auto& folder : {directory_ = base_ / "files", temporary_ = base_ / "temporary"})
      std::filesystem::create_directory(folder);
    setVariable(temporaryVariable, temporary_.string());
  }
  ~ScratchTest() override {
    EXPECT_TRUE(std::filesystem::is_empty(temporary_)) << "the temporary folder is not empty";
    if (before_.empty())
      unsetVariable(temporaryVariable);
    else
      setVariable(temporaryVariable, before_);
    std::filesystem::remove_all(base_);
  }

  std::string path(const std::string& name) const { return (directory_ / name).string(); }
  std::set<std::string> names() const {
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(directory_))
      found.insert(entry.path().filename().string());
    return found;
  }

 private:
  std::filesystem::path base_, directory_, temporary_;
  std::string before_;
};

inline void writeFile(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Sets these locale variables and unsets all others.
inline void setLocaleVariables(const std::map<std::string, std::string>& values) {
  for (const char* name : {"LANGUAGE", "LC_ALL", "LC_CTYPE", "LC_MESSAGES", "LANG"})
    unsetVariable(name);
  for (const auto& [name, value] : values) setVariable(name.c_str(), value);
}

}  // namespace exifkeep::test

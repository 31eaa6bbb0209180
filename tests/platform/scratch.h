// What the platform tests stand on: a directory of their own, whole files in and out, and the
// locale that the environment names.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>

namespace exifkeep::test {

// A test in its own directory, which is gone afterwards.
class ScratchTest : public ::testing::Test {
 protected:
  ScratchTest() {
    std::string name = (std::filesystem::temp_directory_path() / "platform-test-XXXXXX").string();
    directory_ = mkdtemp(name.data());
  }
  ~ScratchTest() override { std::filesystem::remove_all(directory_); }

  std::string path(const std::string& name) const { return (directory_ / name).string(); }
  std::set<std::string> names() const {
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(directory_)) {
      found.insert(entry.path().filename().string());
    }
    return found;
  }

 private:
  std::filesystem::path directory_;
};

inline void writeFile(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Sets the variables that name locales: these and no others.
inline void setLocaleVariables(const std::map<std::string, std::string>& values) {
  for (const char* name : {"LANGUAGE", "LC_ALL", "LC_CTYPE", "LC_MESSAGES", "LANG"}) unsetenv(name);
  for (const auto& [name, value] : values) setenv(name.c_str(), value.c_str(), 1);
}

}  // namespace exifkeep::test

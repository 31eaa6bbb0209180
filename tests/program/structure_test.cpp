// The layers of the tree: which folder may include from which, and what stays out of src/ so that
// it also compiles against the real Windows headers. And what the library exports.
#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <vector>

#include "program/shell.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

// A preprocessor line: {"src/api/exports.cpp", "include", "string"}.
struct Directive {
  fs::path file;
  std::string keyword, name;
};

// Without regular expressions: they take seconds under the sanitizers.
std::vector<Directive> directivesBelow(const std::string& folder) {
  std::vector<Directive> found;
  for (const auto& entry : fs::recursive_directory_iterator(EXIFKEEP_SOURCE_DIR "/" + folder)) {
    if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
    std::istringstream lines(readFile(entry.path()));
    for (std::string line; std::getline(lines, line);) {
      std::istringstream words(line);
      char hash = 0;
      std::string keyword, name;
      if (!(words >> hash >> keyword) || hash != '#') continue;
      if (words >> name && name.size() > 2) name = name.substr(1, name.size() - 2);
      found.push_back({entry.path().lexically_relative(EXIFKEEP_SOURCE_DIR), keyword, name});
    }
  }
  return found;
}

std::string firstFolder(const fs::path& path) {
  return path.empty() ? "" : path.begin()->string();
}

// The layers of src/, each of which may include from those before it; `info` is for `api` alone.
const std::vector<std::string> layers = {"imageio", "probe", "read",  "info",
                                         "write",   "tiff",  "audio", "api"};
bool isLayer(const std::string& folder) {
  return std::ranges::find(layers, folder) != layers.end();
}
bool mayInclude(const std::string& from, const std::string& to) {
  if (to == "info" && from != "api") return from == "info";
  return std::ranges::find(layers, to) <= std::ranges::find(layers, from);
}

TEST(IncludeDirections, PointOneWayAndStayPortable) {
  const std::set<std::string> posix = {"unistd.h",   "fcntl.h",  "dirent.h",
                                       "pthread.h",  "iconv.h",  "strings.h",
                                       "langinfo.h", "libgen.h", "dlfcn.h"};
  int checked = 0;
  std::set<fs::path> conditional;
  for (const auto& [file, keyword, name] : directivesBelow("src")) {
    if (keyword.find("if") != keyword.npos) conditional.insert(file);
    if (keyword != "include") continue;
    EXPECT_FALSE(posix.contains(name) || name.starts_with("sys/")) << file << ": " << name;
    const std::string from = firstFolder(file.lexically_relative("src")), to = firstFolder(name);
    if (!isLayer(to)) continue;
    ASSERT_TRUE(isLayer(from)) << file << " is in no layer";
    // Opening pictures reads the file's directories, and so stands above the probe.
    const bool opens = from == "imageio" &&
                       (file.stem() == "open_picture" || file.stem() == "load_thumbnail") &&
                       (to == "probe" || to == "read");
    EXPECT_TRUE(mayInclude(from, to) || opens) << file << ": " << name;
    ++checked;
  }
  EXPECT_GT(checked, 20);
  EXPECT_EQ(conditional, std::set<fs::path>{"src/imageio/path_separator.h"});
}

// The program and the examples are hosts: they see the public headers and their own folder. The
// platform does not even see the former.
TEST(IncludeDirections, KeepOthersOutOfTheLibrary) {
  for (const char* folder : {"platform", "tools", "examples"})
    for (const auto& [file, keyword, name] : directivesBelow(folder))
      EXPECT_FALSE(keyword == "include" &&
                   (isLayer(firstFolder(name)) || name.find("src/") != name.npos ||
                    name.find("..") != name.npos ||
                    (folder == std::string("platform") && name.starts_with("exifkeep/"))))
          << file << ": " << name;
}

class Exports : public ShellTest {};

TEST_F(Exports, AreTheTenFunctions) {
  const Outcome outcome = run(EXIFKEEP_NM " -D --defined-only '" EXIFKEEP_LIBRARY "'");
  std::vector<std::string> names;
  std::istringstream lines(outcome.out);
  for (std::string address, kind, name; lines >> address >> kind >> name;) names.push_back(name);
  EXPECT_THAT(names, testing::UnorderedElementsAre("IsExifFile", "OpenExifFile", "GetExifInfo",
                                                   "FreeInfoList", "GetExifVersion", "GetSoundFile",
                                                   "SaveFile", "SaveProcessFile", "AddAudio",
                                                   "AddAudioFile"));
}

}  // namespace
}  // namespace exifkeep::test

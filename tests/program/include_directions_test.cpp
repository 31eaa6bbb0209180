// The layers of the tree: which folder may include from which, and what stays out of src/ so that
// it also compiles against the real Windows headers.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

struct Line {
  fs::path file;  // relative to the checkout
  std::string text;
};

std::vector<Line> linesBelow(const std::string& folder) {
  const fs::path root = EXIFKEEP_SOURCE_DIR;
  std::vector<Line> lines;
  for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".h" && extension != ".cpp") continue;
    std::ifstream file(entry.path());
    for (std::string text; std::getline(file, text);) {
      lines.push_back({entry.path().lexically_relative(root), text});
    }
  }
  return lines;
}

// The words of a preprocessor line, such as {"include", "<string>"}; none for any other line.
std::vector<std::string> directive(const std::string& line) {
  std::istringstream text(line);
  char hash;
  std::vector<std::string> words;
  if (!(text >> hash) || hash != '#') return words;
  for (std::string word; text >> word;) words.push_back(word);
  return words;
}

// The name in an include line, empty for any other line.
std::string included(const std::string& line) {
  const std::vector<std::string> words = directive(line);
  if (words.size() < 2 || words[0] != "include") return "";
  return words[1].substr(1, words[1].size() - 2);
}

bool isConditional(const std::string& line) {
  const std::vector<std::string> words = directive(line);
  return !words.empty() && words[0].find("if") != std::string::npos;
}

std::string firstFolder(const fs::path& path) {
  return path.begin()->string();
}

// The layers that each layer of src/ may include from, beside itself and the platform.
const std::map<std::string, std::set<std::string>> layersBelow = {
    {"imageio", {}},
    {"probe", {"imageio"}},
    {"read", {"imageio", "probe"}},
    {"info", {"imageio", "probe", "read"}},
    {"write", {"imageio", "probe", "read"}},
    {"tiff", {"imageio", "probe", "read", "write"}},
    {"audio", {"imageio", "probe", "read", "write", "tiff"}},
    {"api", {"imageio", "probe", "read", "info", "write", "tiff", "audio"}},
};

// Opening pictures reads the file's directories, and so stands above the probe.
bool opensPictures(const fs::path& file) {
  const std::string name = file.stem().string();
  return firstFolder(file.lexically_relative("src")) == "imageio" &&
         (name == "open_picture" || name == "load_thumbnail");
}

TEST(IncludeDirections, PointOneWay) {
  int checked = 0;
  for (const Line& line : linesBelow("src")) {
    const std::string name = included(line.text);
    const std::string to = firstFolder(name);
    if (name.empty() || !layersBelow.contains(to)) continue;
    const std::string from = firstFolder(line.file.lexically_relative("src"));
    ASSERT_TRUE(layersBelow.contains(from)) << line.file << " is in no layer";
    const bool upward = opensPictures(line.file) && (to == "probe" || to == "read");
    EXPECT_TRUE(from == to || layersBelow.at(from).contains(to) || upward)
        << line.file << ": " << line.text;
    ++checked;
  }
  EXPECT_GT(checked, 20);
}

TEST(IncludeDirections, PlatformDoesNotKnowTheLibrary) {
  for (const Line& line : linesBelow("platform")) {
    const std::string name = included(line.text);
    EXPECT_FALSE(layersBelow.contains(firstFolder(name)) || name.find("src/") != name.npos ||
                 name.starts_with("exifkeep/"))
        << line.file << ": " << line.text;
  }
}

// The program and the examples are hosts: what they include by quotes lies in their own folder.
TEST(IncludeDirections, ProgramUsesPublicHeadersOnly) {
  for (const Line& line : linesBelow("tools")) {
    const std::string name = included(line.text);
    EXPECT_FALSE(layersBelow.contains(firstFolder(name)) || name.find("..") != name.npos)
        << line.file << ": " << line.text;
  }
}

TEST(IncludeDirections, SourceIsPortable) {
  const std::set<std::string> posix = {"unistd.h",   "fcntl.h",  "dirent.h",
                                       "pthread.h",  "iconv.h",  "strings.h",
                                       "langinfo.h", "libgen.h", "dlfcn.h"};
  std::set<fs::path> conditional;
  for (const Line& line : linesBelow("src")) {
    const std::string name = included(line.text);
    EXPECT_FALSE(posix.contains(name) || name.starts_with("sys/")) << line.file << ": " << name;
    if (isConditional(line.text)) conditional.insert(line.file);
  }
  EXPECT_EQ(conditional, std::set<fs::path>{"src/imageio/path_separator.h"});
}

}  // namespace
}  // namespace exifkeep::test

// The layers of the tree, which tell what folder may include from which; and what the library
// exports.
#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "program/shell.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

// Calls `check` with each source file below a folder and the name that each #include of it has.
void forEachInclude(const std::string& folder, const auto& check) {
  for (const auto& entry : fs::recursive_directory_iterator(EXIFKEEP_SOURCE_DIR "/" + folder)) {
    if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
    const fs::path file = entry.path().lexically_relative(EXIFKEEP_SOURCE_DIR "/" + folder);
    std::istringstream lines(readFile(entry.path()));
    for (std::string line; std::getline(lines, line);)
      if (line.starts_with("#include "))
        check(file, line.substr(10, line.find_last_of("\">") - 10));
  }
}

std::string firstFolder(const fs::path& path) {
  return path.begin()->string();
}

// The layers of src/, each of which may include from those before it; `info` and `open` are for
// `api` alone.
const std::vector<std::string> layers = {"system", "imageio", "probe", "read",  "info",
                                         "open",   "write",   "tiff",  "audio", "api"};
auto layerOf(const fs::path& path) {
  return std::ranges::find(layers, firstFolder(path));
}

TEST(IncludeDirections, PointOneWay) {
  int checked = 0;
  forEachInclude("src", [&](const fs::path& file, const std::string& name) {
    const auto from = layerOf(file), to = layerOf(name);
    EXPECT_NE(from, layers.end()) << file << " is in no layer";
    if (to == layers.end()) return;
    EXPECT_LE(to - from, 0) << file << ": " << name;
    EXPECT_TRUE((*to != "info" && *to != "open") || from == to || *from == "api")
        << file << ": " << name;
    ++checked;
  });
  EXPECT_GT(checked, 20);
}

// The program and the examples are hosts: they see the public headers and their own folder. The
// platform knows nothing of the library.
TEST(IncludeDirections, KeepOthersOutOfTheLibrary) {
  for (const std::string folder : {"platform", "tools", "examples"})
    forEachInclude(folder, [&](const fs::path& file, const std::string& name) {
      EXPECT_TRUE(layerOf(name) == layers.end() && !name.starts_with("..") &&
                  (folder != "platform" || !name.starts_with("exifkeep/")))
          << file << ": " << name;
    });
}

class Exports : public ShellTest {};

TEST_F(Exports, AreTheTenFunctions) {
  const Outcome outcome = run(EXIFKEEP_NM " -D --defined-only '" EXIFKEEP_LIBRARY "'");
  std::vector<std::string> names;
  std::istringstream lines(outcome.out);
  for (std::string address, kind, name; lines >> address >> kind >> name;) names.push_back(name);
  EXPECT_THAT(names, testing::UnorderedElementsAre(
                         "EXIFKEEP_0", "IsExifFile@@EXIFKEEP_0", "OpenExifFile@@EXIFKEEP_0",
                         "GetExifInfo@@EXIFKEEP_0", "FreeInfoList@@EXIFKEEP_0",
                         "GetExifVersion@@EXIFKEEP_0", "GetSoundFile@@EXIFKEEP_0",
                         "SaveFile@@EXIFKEEP_0", "SaveProcessFile@@EXIFKEEP_0",
                         "AddAudio@@EXIFKEEP_0", "AddAudioFile@@EXIFKEEP_0"));
}

}  // namespace
}  // namespace exifkeep::test

// The documents point at what exists.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>

#include "platform/scratch.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

// The repository's own documents: those at its top and in the folders that have some.
std::vector<fs::path> documents() {
  std::vector<fs::path> found;
  for (const char* folder : {"", "docs", "fuzz"})
    for (const auto& entry : fs::directory_iterator(fs::path(EXIFKEEP_SOURCE_DIR) / folder))
      if (entry.path().extension() == ".md") found.push_back(entry.path());
  return found;
}

// What a heading's link is called: lower case, "-" for spaces, no punctuation.
std::set<std::string> anchorsOf(const fs::path& document) {
  std::set<std::string> anchors;
  std::istringstream lines(readFile(document.string()));
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("#")) continue;
    std::string anchor;
    for (const char c : line.substr(line.find_first_not_of("# "))) {
      if (std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_')
        anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
      if (c == ' ') anchor += '-';
    }
    anchors.insert(anchor);
  }
  return anchors;
}

TEST(Documents, LinkToWhatExists) {
  const std::regex link(R"(\]\(([^)#]*)#?([^)]*)\))");
  int links = 0;
  for (const fs::path& document : documents()) {
    const std::string text = readFile(document.string());
    for (std::sregex_iterator at(text.begin(), text.end(), link), end; at != end; ++at) {
      const std::string file = (*at)[1], anchor = (*at)[2];
      if (file.starts_with("http")) continue;
      const fs::path target = file.empty() ? document : document.parent_path() / file;
      EXPECT_TRUE(fs::exists(target)) << document << ": " << file;
      EXPECT_TRUE(anchor.empty() || anchorsOf(target).contains(anchor))
          << document << " #" << anchor;
      ++links;
    }
  }
  EXPECT_GT(links, 8);
}

}  // namespace
}  // namespace exifkeep::test

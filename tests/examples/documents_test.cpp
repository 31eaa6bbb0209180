// The documents point at what exists.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

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

// What stands in the parentheses of a document's links.
std::vector<std::string> linksIn(const std::string& text) {
  std::vector<std::string> links;
  for (size_t at = text.find("]("); at != text.npos; at = text.find("](", at + 1))
    links.push_back(text.substr(at + 2, text.find(')', at) - at - 2));
  return links;
}

TEST(Documents, LinkToWhatExists) {
  int links = 0;
  for (const fs::path& document : documents()) {
    for (const std::string& link : linksIn(readFile(document.string()))) {
      if (link.starts_with("http")) continue;
      const size_t hash = std::min(link.find('#'), link.size());
      const std::string file = link.substr(0, hash), anchor = link.substr(hash);
      const fs::path target = file.empty() ? document : document.parent_path() / file;
      EXPECT_TRUE(fs::exists(target)) << document << ": " << link;
      EXPECT_TRUE(anchor.empty() || anchorsOf(target).contains(anchor.substr(1)))
          << document << ": " << link;
      ++links;
    }
  }
  EXPECT_GT(links, 8);
}

}  // namespace
}  // namespace exifkeep::test

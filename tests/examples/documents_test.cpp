// The documents point at what exists.
#include <gtest/gtest.h>

#include <filesystem>
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
      EXPECT_TRUE(fs::exists(document.parent_path() / link)) << document << ": " << link;
      ++links;
    }
  }
  EXPECT_GT(links, 8);
}

}  // namespace
}  // namespace exifkeep::test

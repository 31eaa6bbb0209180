// The program's help, its manual page and its bash completion name the same commands and options,
// and links lead somewhere.
#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "program/shell.h"

namespace exifkeep::test {
namespace {

using testing::Contains;
using testing::ContainsRegex;
using testing::HasSubstr;

std::vector<std::string> wordsOf(std::string text) {
  std::ranges::replace(text, ',', ' ');
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

class Documents : public ShellTest {
 protected:
  // The lines below a heading of a help text, up to an empty one.
  std::string sectionOf(const std::string& command, const std::string& heading) const {
    const std::string help = run("$E " + command + " --help").out;
    const size_t start = help.find("\n" + heading + ":\n");
    EXPECT_NE(start, help.npos) << help;
    if (start == help.npos) return "";
    const size_t end = help.find("\n\n", start);
    return help.substr(start + heading.size() + 3, end - start - heading.size() - 3);
  }
  std::vector<std::string> commands() const {
    std::vector<std::string> names;
    std::istringstream lines(sectionOf("", "Commands"));
    for (std::string line; std::getline(lines, line);) names.push_back(wordsOf(line).at(0));
    return names;
  }
  static std::set<std::string> longOnes(const std::vector<std::string>& words) {
    std::set<std::string> options(words.begin(), words.end());
    std::erase_if(options, [](const std::string& word) { return !word.starts_with("--"); });
    return options;
  }
  std::set<std::string> longOptions(const std::string& command) const {
    return longOnes(wordsOf(sectionOf(command, "Options")));
  }
  // What bash offers behind `typed`.
  std::vector<std::string> completionsOf(const std::string& typed, const std::string& word) const {
    const Outcome offered =
        run("bash -c '. \"" EXIFKEEP_SOURCE_DIR "/packaging/exifkeep.bash\"; COMP_WORDS=(" + typed +
            " \"" + word +
            "\"); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _exifkeep; "
            "echo \"${COMPREPLY[@]}\"'");
    EXPECT_EQ(offered.err, "");
    return wordsOf(offered.out);
  }
};

TEST_F(Documents, NameEveryCommandAndOption) {
  std::string manual = readFile(EXIFKEEP_SOURCE_DIR "/packaging/exifkeep.1");
  std::erase(manual, '\\');
  const std::string fish = readFile(EXIFKEEP_SOURCE_DIR "/packaging/exifkeep.fish");
  const std::vector<std::string> all = commands();
  ASSERT_GE(all.size(), 8u);
  for (const std::string& command : all) {
    EXPECT_THAT(manual, HasSubstr("\n.B " + command + "\n"));
    EXPECT_THAT(completionsOf("exifkeep", ""), Contains(command));
    const std::set<std::string> options = longOptions(command);
    EXPECT_THAT(options, Contains("--help"));
    EXPECT_EQ(longOnes(completionsOf("exifkeep " + command, "-")), options) << command;
    for (const std::string& option : options) {
      EXPECT_THAT(manual, ContainsRegex("\n\\.B[RI]? .*" + option + "[ \"\n]"));
      EXPECT_THAT(fish, ContainsRegex(" -l " + option.substr(2) + "[ \n]"));
    }
  }
  EXPECT_EQ(longOnes(completionsOf("exifkeep", "-")), longOptions(""));
}

TEST_F(Documents, CompletionOffersEveryLanguage) {
  const std::vector<std::string> offered = completionsOf("exifkeep info --lang", "");
  std::istringstream lines(run("$E languages").out);
  for (std::string line; std::getline(lines, line);)
    EXPECT_THAT(offered, Contains(wordsOf(line).at(0)));
  EXPECT_EQ(offered.size(), 13u);
  EXPECT_EQ(completionsOf("exifkeep info --lang", "="), offered);
  EXPECT_EQ(completionsOf("exifkeep info --lang =", "d"), std::vector<std::string>{"de"});
}

// Links of the repository's own documents lead to what exists.
TEST(Links, LeadToWhatExists) {
  namespace fs = std::filesystem;
  int links = 0;
  for (const char* folder : {"", "docs", "fuzz"})
    for (const auto& document : fs::directory_iterator(fs::path(EXIFKEEP_SOURCE_DIR) / folder)) {
      if (document.path().extension() != ".md") continue;
      const std::string text = readFile(document.path());
      for (size_t at = text.find("]("); at != text.npos; at = text.find("](", at + 1), ++links) {
        const std::string link = text.substr(at + 2, text.find(')', at) - at - 2);
        EXPECT_TRUE(link.starts_with("http") || fs::exists(document.path().parent_path() / link))
            << document << ": " << link;
      }
    }
  EXPECT_GT(links, 8);
}

}  // namespace
}  // namespace exifkeep::test

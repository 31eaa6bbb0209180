// Which code page the environment's locale means, with exact characters or "?".
#include <code_page.h>

#include <vector>

#include "platform/scratch.h"

namespace exifkeep::test {
namespace {

std::string encoded(const std::map<std::string, std::string>& environment, const char* utf8) {
  setLocaleVariables(environment);
  const auto encoder = CodePageEncoder::forUser();
  if (!encoder) return utf8;
  std::string text = "old";
  encoder->encode(utf8, text);
  return text;
}

TEST(CodePage, ConvertsToTheLocalesCharset) {
  const std::map<const char*, std::vector<const char*>> cases = {
      {"\xE9??.", {"fr_FR.ISO-8859-1", "fr_FR.iso88591"}},
      {"\xE9?\xA4.", {"de_DE.ISO-8859-15@euro"}},
      {"?\x1B$B4A\x1B(B?.", {"ja_JP.ISO-2022-JP"}},
      {"é漢€.",
       {"fr_FR.UTF-8", "fr_FR.utf8", "fr_FR", "C", "fr_FR@euro", "fr_FR.", "fr_FR.nonsense",
        "fr_FR.UTF-16", "fr_FR.ISO-8859-1//TRANSLIT"}}};
  for (const auto& [expected, locales] : cases)
    for (const char* locale : locales)
      EXPECT_EQ(encoded({{"LC_ALL", locale}}, "é漢€."), expected) << locale;
  EXPECT_EQ(encoded({{"LC_CTYPE", "fr_FR.ISO-8859-1"}, {"LANG", "fr_FR.UTF-8"}}, "é"), "\xE9");
  EXPECT_EQ(encoded({{"LC_ALL", "C"}, {"LC_CTYPE", "fr_FR.ISO-8859-1"}}, "é"), "é");
  const std::string text(1000, 'x');  // longer than one step of the conversion
  EXPECT_EQ(encoded({{"LANG", "fr_FR.ISO-8859-1"}}, (text + "é\xFF" + text + "\xE6\xBC").c_str()),
            text + "\xE9?" + text + "?");
}

}  // namespace
}  // namespace exifkeep::test

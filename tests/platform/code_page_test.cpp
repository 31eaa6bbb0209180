// Texts in the user's code page: exact characters or "?".
#include <code_page.h>
#include <platform/scratch.h>

namespace exifkeep::test {
namespace {

std::string encoded(const std::map<std::string, std::string>& environment, const char* utf8) {
  setLocaleVariables(environment);
  const auto encoder = CodePageEncoder::forUser();
  if (encoder == nullptr) return utf8;
  std::string text = "old";
  encoder->encode(utf8, text);
  return text;
}

TEST(CodePage, ConvertsToTheLocalesCharset) {
  const struct {
    const char* locale;
    const char* expected;
  } cases[] = {
      {"fr_FR.ISO-8859-1", "\xE9??."},
      {"fr_FR.iso88591", "\xE9??."},
      {"de_DE.ISO-8859-15@euro", "\xE9?\xA4."},
      {"ja_JP.eucJP", "\x8F\xAB\xB1\xB4\xC1?."},
      {"ja_JP.SJIS", "?\x8A\xBF?."},
      {"ja_JP.ISO-2022-JP", "?\x1B$B4A\x1B(B?."},
      {"en_US.US-ASCII", "???."},
      {"fr_FR.UTF-8", "é漢€."},
      {"fr_FR.utf8", "é漢€."},
      {"fr_FR", "é漢€."},
      {"C", "é漢€."},
      {"fr_FR@euro", "é漢€."},
      {"fr_FR.", "é漢€."},
      {"fr_FR.nonsense", "é漢€."},
      {"fr_FR.UTF-16", "é漢€."},
      {"fr_FR.ISO-8859-1//TRANSLIT", "é漢€."},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(encoded({{"LC_ALL", c.locale}}, "é漢€."), c.expected) << c.locale;
  }
}

TEST(CodePage, IsThatOfTheLocaleForText) {
  EXPECT_EQ(encoded({{"LC_CTYPE", "fr_FR.ISO-8859-1"}, {"LANG", "fr_FR.UTF-8"}}, "é"), "\xE9");
  EXPECT_EQ(encoded({{"LC_ALL", "C"}, {"LC_CTYPE", "fr_FR.ISO-8859-1"}}, "é"), "é");
  EXPECT_EQ(encoded({{"LC_MESSAGES", "fr_FR.ISO-8859-1"}}, "é"), "é");
}

TEST(CodePage, LongTextsAndBrokenOnes) {
  const std::string text(1000, 'x');
  EXPECT_EQ(encoded({{"LANG", "fr_FR.ISO-8859-1"}}, (text + "é漢" + text).c_str()),
            text + "\xE9?" + text);
  EXPECT_EQ(encoded({{"LANG", "fr_FR.ISO-8859-1"}}, "a\xFFz\xE6\xBC"), "a?z?");
}

}  // namespace
}  // namespace exifkeep::test

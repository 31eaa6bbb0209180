// What the environment's locale means: which of the thirteen languages, and which code page, with
// exact characters or "?".
#include <code_page.h>
#include <language.h>
#include <platform/scratch.h>

#include <vector>

namespace exifkeep::test {
namespace {

TEST(Language, Matches) {
  EXPECT_EQ(languageVariants().size(), 13u);
  for (const LanguageVariant& variant : languageVariants())
    EXPECT_EQ(matchLanguage(variant.tag), variant.language) << variant.tag;
  const std::map<LANGID, std::vector<const char*>> cases = {
      {1028, {"zh_TW.Big5", "zh_HK", "zh-mo", "zh-Hant", "zh-hant-CN"}},
      {1031, {"de", "de_AT.UTF-8", "DE_ch@euro", "de-1996"}},
      {2052, {"zh", "zh_SG", "zh_CN.GB18030", "zh-Hans-HK"}},
      {2070, {"pt_BR.utf8"}},
      {0, {"", "C", "deutsch", "e", "ru_RU", "de/../x", "de__AT", "_de", "zh_TWTWTWTWTW"}}};
  for (const auto& [expected, names] : cases)
    for (const char* name : names) EXPECT_EQ(matchLanguage(name), expected) << name;
}

TEST(Language, FollowsTheEnvironment) {
  const std::pair<std::map<std::string, std::string>, LANGID> cases[] = {
      {{}, 1033},
      {{{"LC_MESSAGES", "fr_FR"}, {"LANG", "de_DE"}}, 1036},
      {{{"LC_ALL", "sv_SE"}, {"LC_MESSAGES", "fr_FR"}, {"LANG", "de_DE"}}, 1053},
      {{{"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LC_CTYPE", "ja_JP"}, {"LANG", "nl_BE"}}, 1043},
      // LANGUAGE goes first, entry by entry ...
      {{{"LANGUAGE", "ru::pt_BR:it"}, {"LANG", "de_DE"}}, 2070},
      {{{"LANGUAGE", "ru:uk"}, {"LANG", "de_DE"}}, 1031},
      {{{"LANGUAGE", "ru:C:it"}, {"LANG", "de_DE"}}, 1033},
      {{{"LANGUAGE", "ko"}, {"LANG", "C.UTF-8"}}, 1042},
      // ... unless the locale is the untranslated one.
      {{{"LANGUAGE", "it"}, {"LC_ALL", "POSIX"}, {"LANG", "de_DE"}}, 1033},
      {{{"LANGUAGE", "it"}, {"LC_ALL", "de_DE"}, {"LANG", "C"}}, 1040},
  };
  for (const auto& [environment, expected] : cases) {
    setLocaleVariables(environment);
    EXPECT_EQ(userLanguage(), expected) << ::testing::PrintToString(environment);
  }
}

std::string encoded(const std::map<std::string, std::string>& environment, const char* utf8) {
  setLocaleVariables(environment);
  const auto encoder = CodePageEncoder::forUser();
  if (encoder == nullptr) return utf8;
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

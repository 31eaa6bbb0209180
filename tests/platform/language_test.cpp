// Which of the thirteen languages a name or an environment means.
#include <language.h>
#include <platform/scratch.h>

#include <vector>

namespace exifkeep::test {
namespace {

TEST(Language, VariantsMatchTheirOwnTags) {
  EXPECT_EQ(languageVariants().size(), 13u);
  for (const LanguageVariant& variant : languageVariants()) {
    EXPECT_EQ(matchLanguage(variant.tag), variant.language) << variant.tag;
  }
}

TEST(Language, Matches) {
  const std::map<LANGID, std::vector<const char*>> cases = {
      {1028, {"zh_TW.Big5", "ZH-TW", "zh_HK", "zh-mo", "zh-Hant", "zh-hant-CN"}},
      {1031, {"de", "de_AT.UTF-8", "DE_ch@euro", "de-1996"}},
      {1033, {"en_GB"}},
      {1035, {"fi-FI"}},
      {1041, {"ja_JP.eucJP"}},
      {2052, {"zh", "zh_SG", "zh_CN.GB18030", "zh-Hans-HK"}},
      {2070, {"pt_BR.utf8"}},
      {0,
       {"", "C", "POSIX", "C.UTF-8", "deutsch", "e", "ru_RU", "dex", "de/../x", "de__AT", "_de",
        ".de", "@de", "de_AT:fr", "zh_TWTWTWTWTW", "\xC4\xE4"}}};
  for (const auto& [expected, names] : cases) {
    for (const char* name : names) EXPECT_EQ(matchLanguage(name), expected) << name;
  }
}

TEST(Language, FollowsTheEnvironment) {
  const struct {
    std::map<std::string, std::string> environment;
    LANGID expected;
  } cases[] = {
      {{}, 1033},
      {{{"LANG", "ru_RU.UTF-8"}}, 1033},
      {{{"LANG", "de_DE.UTF-8"}}, 1031},
      {{{"LC_MESSAGES", "fr_FR"}, {"LANG", "de_DE"}}, 1036},
      {{{"LC_ALL", "sv_SE"}, {"LC_MESSAGES", "fr_FR"}, {"LANG", "de_DE"}}, 1053},
      {{{"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LANG", "nl_BE"}}, 1043},
      {{{"LC_CTYPE", "ja_JP"}, {"LANG", "de_DE"}}, 1031},
      // LANGUAGE goes first, entry by entry ...
      {{{"LANGUAGE", "it"}, {"LANG", "de_DE"}}, 1040},
      {{{"LANGUAGE", "ru::pt_BR:it"}, {"LANG", "de_DE"}}, 2070},
      {{{"LANGUAGE", "ru:uk"}, {"LANG", "de_DE"}}, 1031},
      {{{"LANGUAGE", "ru:C:it"}, {"LANG", "de_DE"}}, 1033},
      {{{"LANGUAGE", ""}, {"LANG", "de_DE"}}, 1031},
      {{{"LANGUAGE", "ko"}}, 1042},
      {{{"LANGUAGE", "ko"}, {"LANG", "C.UTF-8"}}, 1042},
      // ... unless the locale is the untranslated one.
      {{{"LANGUAGE", "it"}, {"LANG", "C"}}, 1033},
      {{{"LANGUAGE", "it"}, {"LC_ALL", "POSIX"}, {"LANG", "de_DE"}}, 1033},
      {{{"LANGUAGE", "it"}, {"LC_ALL", "de_DE"}, {"LANG", "C"}}, 1040},
  };
  for (const auto& c : cases) {
    setLocaleVariables(c.environment);
    EXPECT_EQ(userLanguage(), c.expected) << ::testing::PrintToString(c.environment);
  }
}

}  // namespace
}  // namespace exifkeep::test

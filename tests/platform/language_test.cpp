// SPDX-License-Identifier: MIT
#include <language.h>

#include <vector>

#include "platform/scratch.h"

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
  // Neutral languages, regions, scripts: German, Austrian, Brazilian, Hong Kong, Singapore,
  // Russian.
  const std::map<LANGID, LANGID> ids = {{0x07, 1031},   {0x0C07, 1031}, {0x0416, 2070},
                                        {0x0C04, 1028}, {0x7C04, 1028}, {0x1004, 2052},
                                        {0x04, 2052},   {0x0419, 0}};
  for (const auto& [id, expected] : ids) EXPECT_EQ(matchLanguage(id), expected) << id;
}

TEST(Language, FollowsTheEnvironment) {
  const std::pair<std::map<std::string, std::string>, LANGID> cases[] = {
      {{}, 1033},
      {{{"LC_MESSAGES", "fr_FR"}, {"LANG", "de_DE"}}, 1036},
      {{{"LC_ALL", "sv_SE"}, {"LC_MESSAGES", "fr_FR"}, {"LANG", "de_DE"}}, 1053},
      {{{"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LC_CTYPE", "ja_JP"}, {"LANG", "nl_BE"}}, 1043},
      // LANGUAGE comes first, entry by entry ...
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

}  // namespace
}  // namespace exifkeep::test

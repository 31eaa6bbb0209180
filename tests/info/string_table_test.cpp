// The compiled string table, as the library loads its texts: clean and translated in every
// language. That no text is missing, empty, padded or no UTF-8 is checked when the table is
// compiled.
#include "info/string_table.h"

#include <language.h>
#include <platform/scratch.h>

#include <algorithm>
#include <vector>

namespace exifkeep::test {
namespace {

// The texts from id 0 to the one after the last.
std::vector<std::string> textsIn(const LanguageVariant& variant) {
  static constexpr AFX_MODULE_STATE module(&stringTable);
  setLocaleVariables({{"LANGUAGE", std::string(variant.tag)}});
  const AFX_MAINTAIN_STATE2 state(&module);
  std::vector<std::string> texts;
  for (UINT id = 0; id <= 159; ++id) {
    CString text;
    text.LoadString(id);
    texts.emplace_back(text);
  }
  return texts;
}

// A text or two of each language as they were given, so that none stands in for another.
TEST(StringTable, HoldsTheGivenTexts) {
  using Texts = std::pair<std::string, std::string>;
  const std::map<LANGID, Texts> given = {
      {1028, {"影像說明", "秒"}},
      {1031, {"Bildbeschreibung", "Sekunden"}},
      {1033, {"Image Description", "seconds"}},
      {1034, {"Descripción de la Imagen", "segundos"}},
      {1035, {"Kuvan kuvaus", "sekuntia"}},
      {1036, {"Description Image", "secondes"}},
      {1040, {"Descrizione immagine", "secondi"}},
      {1041, {"イメージ説明", "秒"}},
      {1042, {"이미지 설명", "초"}},
      {1043, {"Beschrijving van afbeelding", "seconden"}},
      {1053, {"Bildbeskrivning", "sekunder"}},
      {2052, {"图像描述", "秒"}},
      {2070, {"Descrição da Imagem", "segundos"}},
  };
  for (const LanguageVariant& variant : languageVariants()) {
    const std::vector<std::string> texts = textsIn(variant);
    EXPECT_EQ(Texts(texts[1], texts[72]), given.at(variant.language));
  }
}

TEST(StringTable, IsCleanAndTranslated) {
  const std::vector<std::string> english =
      textsIn(*std::ranges::find(languageVariants(), 1033, &LanguageVariant::language));
  for (const LanguageVariant& variant : languageVariants()) {
    int same = 0;
    const std::vector<std::string> texts = textsIn(variant);
    for (size_t id = 1; id < texts.size(); ++id) {
      // Wide and hard blanks, leftovers of conversions, and what printf would take for its own.
      for (const char* unwanted : {"\u3000", "\u00A0", "\uFEFF", "\uFFFD", "%"})
        EXPECT_EQ(texts[id].find(unwanted), std::string::npos) << texts[id];
      EXPECT_EQ(texts[id].empty(), id == 19 || id == 159) << id;
      same += texts[id] == english[id];
    }
    // Names of standards, words that the languages share, and the ids that none has a text for.
    EXPECT_TRUE(variant.language == 1033 || same <= 15) << variant.language << ' ' << same;
  }
}

}  // namespace
}  // namespace exifkeep::test

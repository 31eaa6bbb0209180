// The compiled string table: clean and translated in every language. That no text is missing,
// empty, padded or no UTF-8 is checked when the table is compiled.
#include "info/string_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace exifkeep::test {
namespace {

// A text or two of each language as they were given, so that none stands in for another.
TEST(StringTable, HoldsTheGivenTexts) {
  using Texts = std::pair<std::string_view, std::string_view>;
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
  ASSERT_EQ(stringTable.variants.size(), given.size());
  for (const AfxStringVariant& variant : stringTable.variants)
    EXPECT_EQ(Texts(variant.texts[1], variant.texts[72]), given.at(variant.language));
}

TEST(StringTable, IsCleanAndTranslated) {
  const auto english = std::ranges::find(stringTable.variants, 1033, &AfxStringVariant::language);
  for (const AfxStringVariant& variant : stringTable.variants) {
    int same = 0;
    for (size_t id = 1; id < variant.texts.size(); ++id) {
      // Wide and hard blanks, leftovers of conversions, and what printf would take for its own.
      for (const char* unwanted : {"\u3000", "\u00A0", "\uFEFF", "\uFFFD", "%"})
        EXPECT_EQ(variant.texts[id].find(unwanted), std::string_view::npos) << variant.texts[id];
      same += variant.texts[id] == english->texts[id];
    }
    // Names of standards, words that the languages share, and the id that none has a text for.
    EXPECT_TRUE(variant.language == 1033 || same <= 14) << variant.language << ' ' << same;
  }
}

}  // namespace
}  // namespace exifkeep::test

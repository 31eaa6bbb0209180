// The compiled string table: complete, clean and translated in every language. The build checks
// UTF-8 and completeness of the files; this looks at what the library holds.
#include "info/string_table.h"

#include <gtest/gtest.h>

#include <map>

namespace exifkeep::test {
namespace {

constexpr size_t idCount = 159, emptyId = 19;

TEST(StringTable, HasEveryTextInEveryLanguage) {
  std::map<LANGID, std::span<const std::string_view>> variants;
  for (const AfxStringVariant& variant : stringTable.variants)
    variants[variant.language] = variant.texts;
  ASSERT_EQ(variants.size(), 13u);
  for (const auto& [language, texts] : variants) {
    ASSERT_EQ(texts.size(), idCount) << language;
    int same = 0;
    for (size_t id = 1; id < idCount; ++id) {
      const std::string_view text = texts[id];
      EXPECT_EQ(text.empty(), id == emptyId) << language << ' ' << id;
      if (text.empty()) continue;
      EXPECT_TRUE(text.front() != ' ' && text.back() != ' ') << text;
      // Wide and hard blanks, leftovers of conversions, and what printf would take for its own.
      for (const char* unwanted : {"\u3000", "\u00A0", "\uFEFF", "\uFFFD", "%"})
        EXPECT_EQ(text.find(unwanted), text.npos) << text;
      for (const char c : text) EXPECT_TRUE(uint8_t(c) >= 0x20 && c != 0x7F) << text;
      same += text == variants[1033][id];
    }
    // Names of standards, and words that the languages share.
    EXPECT_TRUE(language == 1033 || same <= 13) << language << ' ' << same;
  }
}

// A text of each language as it was given, so that none stands in for another.
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
  for (const AfxStringVariant& variant : stringTable.variants)
    EXPECT_EQ(Texts(variant.texts[1], variant.texts[72]), given.at(variant.language));
}

}  // namespace
}  // namespace exifkeep::test

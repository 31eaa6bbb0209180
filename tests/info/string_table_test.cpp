// The compiled string table: complete, clean and translated in every language. The build checks
// UTF-8 and completeness of the files; this looks at what the library holds.
#include "info/string_table.h"

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <string>

namespace exifkeep::test {
namespace {

constexpr size_t idCount = 159, emptyId = 19;

// Reviewed one by one: the word is the language's own. Names of standards stay in all languages.
const std::map<LANGID, std::set<std::string_view>> sameAsEnglish = {
    {1031, {"Copyright", "Software", "Normal", "Standard"}},
    {1034, {"Software", "Flash", "Manual", "Normal"}},
    {1036, {"Flash", "Saturation", "Normal", "Standard", "Portrait"}},
    {1040, {"Copyright", "Software", "Flash", "Spot", "Multispot", "Standard"}},
    {1043, {"Copyright", "Software", "Contrast", "Hard", "Model"}},
    {1053, {"Copyright", "Normal", "Standard"}},
    {2070, {"Software", "Flash", "Manual", "Normal"}},
};
const std::set<std::string_view> names = {"D55", "D65", "D75", "sRGB", "DSC", "(mm)", "(R98)"};

TEST(StringTable, HasEveryTextInEveryLanguage) {
  std::map<LANGID, std::span<const std::string_view>> variants;
  for (const AfxStringVariant& variant : stringTable.variants)
    variants[variant.language] = variant.texts;
  ASSERT_EQ(variants.size(), 13u);
  for (const auto& [language, texts] : variants) {
    ASSERT_EQ(texts.size(), idCount) << language;
    std::set<std::string_view> same;
    for (size_t id = 1; id < idCount; ++id) {
      const std::string_view text = texts[id];
      EXPECT_EQ(text.empty(), id == emptyId) << language << ' ' << id;
      if (text.empty()) continue;
      EXPECT_TRUE(text.front() != ' ' && text.back() != ' ') << text;
      // Wide and hard blanks, leftovers of conversions, and what printf would take for its own.
      for (const char* unwanted : {"\u3000", "\u00A0", "\uFEFF", "\uFFFD", "%"})
        EXPECT_EQ(text.find(unwanted), text.npos) << text;
      for (const char c : text) EXPECT_TRUE(uint8_t(c) >= 0x20 && c != 0x7F) << text;
      if (language != 1033 && text == variants[1033][id] && !names.contains(text))
        same.insert(text);
    }
    const auto reviewed = sameAsEnglish.find(language);
    EXPECT_EQ(same,
              reviewed == sameAsEnglish.end() ? std::set<std::string_view>() : reviewed->second)
        << language;
  }
}

TEST(StringTable, HoldsTheGivenTexts) {
  const std::map<LANGID, std::vector<std::string>> given = {
      {1028, {"影像說明", "保留", "秒"}},
      {1031, {"Bildbeschreibung", "Reserviert", "Sekunden"}},
      {1033, {"Image Description", "reserved", "seconds"}},
      {1034, {"Descripción de la Imagen", "reservado", "segundos"}},
      {1035, {"Kuvan kuvaus", "varattu", "sekuntia"}},
      {1036, {"Description Image", "réservé", "secondes"}},
      {1040, {"Descrizione immagine", "riservato", "secondi"}},
      {1041, {"イメージ説明", "予備", "秒"}},
      {1042, {"이미지 설명", "예약됨", "초"}},
      {1043, {"Beschrijving van afbeelding", "gereserveerd", "seconden"}},
      {1053, {"Bildbeskrivning", "reserverad", "sekunder"}},
      {2052, {"图像描述", "保留", "秒"}},
      {2070, {"Descrição da Imagem", "reservado", "segundos"}},
  };
  for (const AfxStringVariant& variant : stringTable.variants)
    EXPECT_THAT(given.at(variant.language),
                testing::ElementsAre(variant.texts[1], variant.texts[16], variant.texts[72]));
}

}  // namespace
}  // namespace exifkeep::test

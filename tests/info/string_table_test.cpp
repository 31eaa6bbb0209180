// The compiled string table, as the library loads its texts: each language in its place.
// That the texts are whole and clean is checked when the table is compiled.
#include "info/string_table.h"

#include <language.h>
#include <platform/scratch.h>

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

}  // namespace
}  // namespace exifkeep::test

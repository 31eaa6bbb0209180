// The compiled string table, as the library loads its texts: each language in its place. That the
// texts are whole and clean is checked when the table is compiled.
#include <language.h>

#include "info/string_table.h"
#include "platform/scratch.h"

namespace exifkeep::test {
namespace {

// A text of each language as it was given, so that none stands in for another; and the first and
// the last id, one that has no text, and the one after the last.
TEST(StringTable, HoldsTheGivenTexts) {
  static constexpr AFX_MODULE_STATE module(&stringTable);
  const std::map<LANGID, const char*> given = {{1028, "影像說明"},
                                               {1031, "Bildbeschreibung"},
                                               {1033, "Image Description"},
                                               {1034, "Descripción de la Imagen"},
                                               {1035, "Kuvan kuvaus"},
                                               {1036, "Description Image"},
                                               {1040, "Descrizione immagine"},
                                               {1041, "イメージ説明"},
                                               {1042, "이미지 설명"},
                                               {1043, "Beschrijving van afbeelding"},
                                               {1053, "Bildbeskrivning"},
                                               {2052, "图像描述"},
                                               {2070, "Descrição da Imagem"}};
  for (const LanguageVariant& variant : languageVariants()) {
    setLocaleVariables({{"LANGUAGE", std::string(variant.tag)}});
    const AFX_MAINTAIN_STATE2 state(&module);
    CString text;
    EXPECT_TRUE(text.LoadString(1) && text == given.at(variant.language)) << variant.tag;
    EXPECT_TRUE(text.LoadString(158)) << variant.tag;
    for (const UINT id : {0, 19, 159}) EXPECT_FALSE(text.LoadString(id)) << variant.tag << id;
  }
}

}  // namespace
}  // namespace exifkeep::test

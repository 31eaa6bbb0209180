// SPDX-License-Identifier: MIT
#include <language.h>

#include <optional>

#include "full_picture.h"
#include "info/string_table.h"
#include "platform/scratch.h"
#include "read/reading.h"

namespace exifkeep::test {
namespace {

class InfoListTest : public ReadTest {
 protected:
  InfoListTest() { setLocaleVariables({{"LANGUAGE", "en"}}); }

  // The value with this label in a picture with another entry in IFD0 or the Exif directory.
  std::optional<std::string> shown(const std::string& label, const Entry& entry) const {
    Picture picture{.image = {exifPointer()}, .exif = {version()}};
    const bool isExif = entry.tag == 0x829A || entry.tag == 0x829D || entry.tag > 0x8800;
    (isExif ? picture.exif : picture.image).push_back(entry);
    for (const auto& [name, value] : itemsOf(fileOf(tiffBytes(picture, Order::mm))))
      if (name == label) return value;
    return std::nullopt;
  }
};

const int64_t intMin = INT32_MIN, uintMax = UINT32_MAX;
const std::string letters(300, 'n'), code = "ASCII+++";

// The text shown, or no value if there is no item.
const std::tuple<const char*, Entry, std::optional<std::string>> cases[] = {
    {"Image resolution in height", rationals(0x11B, {uintMax, 0x80000000}), "-1/-2147483648"},
    {"Exposure Time", rationals(0x829A, {2, 1}), "2 (seconds)"},
    {"F-number", rationals(0x829D, {28, 0}), std::nullopt},
    {"Compressed Bits Per Pixel", rationals(0x9102, {1, 4}), "0.2"},
    {"Compressed Bits Per Pixel", rationals(0x9102, {3, 4}), "0.8"},
    // These are not ties: the binary fraction for 0.15 is less, that for 0.45 is more.
    {"Compressed Bits Per Pixel", rationals(0x9102, {3, 20}), "0.1"},
    {"Compressed Bits Per Pixel", rationals(0x9102, {9, 20}), "0.5"},
    {"ExposureBias", signedRational(0x9204, 0, -5), "-0.0 (APEX)"},
    {"ExposureBias", signedRational(0x9204, intMin, -1), "2147483648.0 (APEX)"},
    {"Aperture", rationals(0x9202, {uintMax, uintMax}), "1.0 (APEX)"},
    {"Focal Length", rationals(0x920A, {50, 0}), std::nullopt},
    {"ISO Speed Ratings", shorts(0x8827, {100, 200}), "100"},
    {"ISO Speed Ratings", shorts(0x8827, {0}), std::nullopt},
    // 0 is a number like any other, except for the ISO speed.
    {"Focal length in 35 mm film", shorts(0xA405, {0}), "0"},
    {"Image Width", shorts(0x100, {0}), "0"},
    {"Image Height", shorts(0x101, {0}), "0"},
    {"Pixels - X Dimension", shorts(0xA002, {0}), "0"},
    {"Pixels - Y Dimension", shorts(0xA003, {0}), "0"},
    // Texts are not interpreted and end at a zero byte.
    {"Make", text(0x10F, "%s%n%d %%"), "%s%n%d %%"},
    {"Model", text(0x110, std::string("ab\0cd", 5)), "ab"},
    {"Date and Time of Digitization", text(0x9004, ":::::::::::::::::::"), "//////////:::::::::"},
    {"Maker Note", bytes(0x927C, letters), letters.substr(0, 255)},
    {"Maker Note", bytes(0x927C, std::string("no\0te", 5)), "no"},
    {"Maker Note", bytes(0x927C, "").withCount(0), ""},
    {"User Comment", bytes(0x9286, code), ""},
    {"FlashPix Version", bytes(0xA000, "1000"), "10.00"},
    {"FlashPix Version", bytes(0xA000, "01"), "1."},
    {"Component Configuration", bytes(0x9101, std::string("\1\2\3\0", 4)), "YCbCr"},
    {"Component Configuration", bytes(0x9101, "\7\1\xFF\2"), "Does not existYCb"},
};

TEST_F(InfoListTest, ShowsUnusualValues) {
  for (const auto& [label, entry, expected] : cases)
    EXPECT_EQ(shown(label, entry), expected) << label;
}

TEST_F(InfoListTest, AppendsAndFrees) {
  const std::string tiff = tiffBytes(fullPicture(), Order::ii), file = fileOf(tiff);
  const Items once = itemsOf(file);
  Items twice = once;
  twice.insert(twice.end(), once.begin(), once.end());
  CPtrList list;
  EXPECT_EQ(GetExifInfo(file.c_str(), &list), 1);
  EXPECT_EQ(itemsIn(list), once);
  EXPECT_EQ(GetExifInfo(file.c_str(), &list), 1);
  EXPECT_EQ(itemsIn(list), twice);
  for (const std::string& refused :
       {std::string(), path("missing.jpg"), path(""), fileOf(jpegStart + jpegEnd, "plain.jpg"),
        fileOf(tiff, "x.png")})
    EXPECT_EQ(GetExifInfo(refused.c_str(), &list), 0);
  EXPECT_EQ(itemsIn(list), twice);
  EXPECT_EQ(GetExifInfo(file.c_str(), nullptr), 0);
  EXPECT_EQ(FreeInfoList(&list), 1);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(GetExifInfo(file.c_str(), &list), 1);  // for the next picture
  EXPECT_EQ(itemsIn(list), once);
  list.AddHead(nullptr);
  list.AddTail(nullptr);
  EXPECT_EQ(FreeInfoList(&list), 1);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(FreeInfoList(nullptr), 0);
}

// A text of each language, to detect mixed-up languages; the first and the last id, one without a
// text, and the one after the last.
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

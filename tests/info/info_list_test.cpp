// The list as hosts see it: order, appending, language and code page, and what is left of it when
// memory runs out.
#include "info/listing.h"
#include "info/memory_meter.h"

namespace exifkeep::test {
namespace {

class InfoListTest : public ReadTest {
 protected:
  InfoListTest() { setLocaleVariables({{"LANGUAGE", "en"}}); }
};

const Picture camera{.image = {exifPointer(), text(0x110, "Model of the picture"),
                               text(0x10F, "Maker of things"), shorts(0x112, {1})},
                     .exif = {bytes(0x927C, "the note"), version(), rationals(0x829A, {1, 60})},
                     .thumbnail = {text(0x10F, "not listed")}};

TEST_F(InfoListTest, AppendsInDisplayOrderAndFrees) {
  const std::string file = fileOf(tiffBytes(camera, Order::ii));
  const Items once = {{"Make", "Maker of things"},
                      {"Model", "Model of the picture"},
                      {"Orientation of image",
                       "Row 0 is at the visible top of the image, and column 0 is at the visible "
                       "left-hand side."},
                      {"Exposure Time", "1/60 (seconds)"},
                      {"Exif Version", "2.20"},
                      {"Maker Note", "the note"}};
  Items twice = once;
  twice.insert(twice.end(), once.begin(), once.end());
  CPtrList list;
  EXPECT_EQ(GetExifInfo(file.c_str(), &list), 1);
  EXPECT_EQ(itemsIn(list), once);
  EXPECT_EQ(GetExifInfo(file.c_str(), &list), 1);
  EXPECT_EQ(itemsIn(list), twice);
  for (const std::string& refused :
       {std::string(), path("missing.jpg"), path(""), fileOf(jpegStart + jpegEnd, "plain.jpg"),
        fileOf(tiffBytes(camera, Order::ii), "x.png")})
    EXPECT_EQ(GetExifInfo(refused.c_str(), &list), 0);
  EXPECT_EQ(itemsIn(list), twice);
  EXPECT_EQ(GetExifInfo(file.c_str(), nullptr), 0);
  EXPECT_EQ(FreeInfoList(&list), 1);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(FreeInfoList(&list), 1);
  EXPECT_EQ(FreeInfoList(nullptr), 0);
}

TEST_F(InfoListTest, SpeaksTheUsersLanguageInTheUsersCodePage) {
  const std::string file = fileOf(tiffBytes(camera, Order::ii));
  const struct {
    std::map<std::string, std::string> locale;
    const char* make;
    const char* time;
  } cases[] = {
      {{{"LANGUAGE", "de"}}, "Hersteller", "1/60 (Sekunden)"},
      {{{"LANG", "fr_FR.UTF-8"}}, "Fabricant", "1/60 (secondes)"},
      {{{"LANGUAGE", "xx:ja:de"}, {"LANG", "C.UTF-8"}}, "メーカー名", "1/60 (秒)"},
      {{{"LANGUAGE", "ko"}, {"LC_ALL", "fr_FR.UTF-8"}}, nullptr, "1/60 (초)"},
      {{{"LC_ALL", "ja_JP.ISO-8859-1"}}, "?????", "1/60 (?)"},
      {{{"LC_ALL", "ja_JP.eucJP"}}, nullptr, "1/60 (\xC9\xC3)"},
      {{}, "Make", "1/60 (seconds)"},
  };
  for (const auto& [locale, make, time] : cases) {
    setLocaleVariables(locale);
    const Items items = itemsOf(file);
    ASSERT_EQ(items.size(), 6u);
    EXPECT_TRUE(!make || items[0].first == make) << items[0].first;
    EXPECT_EQ(items[0].second, "Maker of things");
    EXPECT_EQ(items[3].second, time);
  }
  // What a charset holds arrives in it.
  setLocaleVariables({{"LANG", "fr_FR.ISO-8859-1"}});
  const Picture reserved{.image = {exifPointer(), shorts(0x128, {9})}, .exif = {version()}};
  EXPECT_EQ(itemsOf(fileOf(tiffBytes(reserved, Order::ii))).at(0).second, "r\xE9serv\xE9");
}

TEST_F(InfoListTest, IsAsItWasWhenMemoryRunsOut) {
  const std::string file = fileOf(tiffBytes(camera, Order::ii));
  CPtrList list;
  ASSERT_EQ(GetExifInfo(file.c_str(), &list), 1);
  const Items before = itemsIn(list);
  for (const bool lasting : {false, true}) {
    int refused = 0;
    for (int n = 1, failed = 1; failed > 0; ++n) {
      failAllocations(n, lasting);
      const int answer = GetExifInfo(file.c_str(), &list);
      failed = allocationsFailed();
      failAllocations(0);
      refused += answer == 0;
      Items expected = before;
      if (answer == 1) expected.insert(expected.end(), before.begin(), before.end());
      Items after = itemsIn(list);
      // A maker note for which there was no room is left out; all else is all or nothing.
      if (answer == 1 && failed > 0 && after.size() < expected.size()) expected.pop_back();
      ASSERT_EQ(after, expected) << n;
      if (answer == 0) continue;
      FreeInfoList(&list);
      ASSERT_EQ(GetExifInfo(file.c_str(), &list), 1);
    }
    EXPECT_GT(refused, 2);
  }
  FreeInfoList(&list);
}

}  // namespace
}  // namespace exifkeep::test

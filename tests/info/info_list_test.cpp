// The list as hosts see it: order, appending and freeing.
#include "info/listing.h"

namespace exifkeep::test {
namespace {

using InfoListTest = ReadTest;

const Picture camera{.image = {exifPointer(), text(0x110, "Model of the picture"),
                               text(0x10F, "Maker of things"), shorts(0x112, {1})},
                     .exif = {bytes(0x927C, "the note"), version(), interoperabilityPointer(),
                              rationals(0x829A, {1, 60})},
                     .interoperability = {bytes(1, "R98", typeAscii)},
                     .thumbnail = {text(0x10F, "not listed")}};

TEST_F(InfoListTest, AppendsInDisplayOrderAndFrees) {
  setLocaleVariables({{"LANGUAGE", "en"}});
  const std::string file = fileOf(tiffBytes(camera, Order::ii));
  const Items once = {{"Make", "Maker of things"},
                      {"Model", "Model of the picture"},
                      {"Orientation of image",
                       "Row 0 is at the visible top of the image, and column 0 is at the visible "
                       "left-hand side."},
                      {"Exposure Time", "1/60 (seconds)"},
                      {"Exif Version", "2.20(R98)"},
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
  EXPECT_EQ(FreeInfoList(nullptr), 0);
}

}  // namespace
}  // namespace exifkeep::test

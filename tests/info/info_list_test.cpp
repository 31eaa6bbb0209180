// The list as hosts see it: the texts that show stored values; order, appending and freeing.
#include <optional>

#include "info/listing.h"

namespace exifkeep::test {
namespace {

class InfoListTest : public ReadTest {
 protected:
  InfoListTest() { setLocaleVariables({{"LANGUAGE", "en"}}); }

  // The value under this label in a picture with one more entry in IFD0 or the Exif directory.
  std::optional<std::string> shown(const std::string& label, const Entry& entry) const {
    Picture picture{.image = {exifPointer()}, .exif = {version()}};
    const bool isExif = entry.tag == 0x829A || entry.tag == 0x829D || entry.tag > 0x8800;
    (isExif ? picture.exif : picture.image).push_back(entry);
    for (const auto& [name, value] : itemsOf(fileOf(tiffBytes(picture, Order::mm))))
      if (name == label) return value;
    return std::nullopt;
  }
};

Entry signedRational(uint16_t tag, int64_t numerator, int64_t denominator) {
  Entry entry = rationals(tag, {numerator, denominator});
  entry.type = typeSrational;
  return entry;
}

const int64_t intMin = INT32_MIN, uintMax = UINT32_MAX;
const std::string letters(300, 'n'), code = "ASCII+++", row0 = "Row 0 is at the visible ";

const struct {
  const char* label;
  Entry entry;
  std::optional<std::string> expected;  // none: no item
} cases[] = {
    {"Image resolution in width", rationals(0x11A, {72, 1}), "72"},
    {"Image resolution in width", rationals(0x11A, {300, 2}), "300/2"},
    {"Image resolution in height", rationals(0x11B, {uintMax, 0x80000000}), "-1/-2147483648"},
    {"Exposure Time", rationals(0x829A, {1, 60}), "1/60 (seconds)"},
    {"Exposure Time", rationals(0x829A, {2, 1}), "2 (seconds)"},
    {"F-number", rationals(0x829D, {28, 10}), "2.8"},
    {"F-number", rationals(0x829D, {28, 0}), std::nullopt},
    {"Compressed Bits Per Pixel", rationals(0x9102, {1, 4}), "0.2"},
    {"Compressed Bits Per Pixel", rationals(0x9102, {3, 4}), "0.8"},
    // Not ties: the binary fraction of 0.15 is less, that of 0.45 more.
    {"Compressed Bits Per Pixel", rationals(0x9102, {3, 20}), "0.1"},
    {"Compressed Bits Per Pixel", rationals(0x9102, {9, 20}), "0.5"},
    {"ExposureBias", signedRational(0x9204, -2, 3), "-0.7 (APEX)"},
    {"ExposureBias", signedRational(0x9204, 0, -5), "-0.0 (APEX)"},
    {"ExposureBias", signedRational(0x9204, intMin, -1), "2147483648.0 (APEX)"},
    {"Aperture", rationals(0x9202, {uintMax, uintMax}), "1.0 (APEX)"},
    {"Focal Length", rationals(0x920A, {545, 100}), "5.4 (mm)"},
    {"Focal Length", rationals(0x920A, {50, 0}), std::nullopt},
    {"ISO Speed Ratings", shorts(0x8827, {100, 200}), "100"},
    {"ISO Speed Ratings", shorts(0x8827, {0}), std::nullopt},
    {"Focal length in 35 mm film", shorts(0xA405, {0}), "0"},
    // Texts are data and end at a zero byte.
    {"Make", text(0x10F, "%s%n%d %%"), "%s%n%d %%"},
    {"Model", text(0x110, std::string("ab\0cd", 5)), "ab"},
    {"File change date and time", text(0x132, "2002:05:14 10:20:30"), "2002/05/14 10:20:30"},
    {"Date and Time of Digitization", text(0x9004, ":::::::::::::::::::"), "//////////:::::::::"},
    {"Maker Note", bytes(0x927C, letters), letters.substr(0, 255)},
    {"Maker Note", bytes(0x927C, std::string("no\0te", 5)), "no"},
    {"Maker Note", bytes(0x927C, "").withCount(0), ""},
    {"User Comment", bytes(0x9286, code + "%s"), "%s"},
    {"User Comment", bytes(0x9286, code), ""},
    {"FlashPix Version", bytes(0xA000, "1000"), "10.00"},
    {"FlashPix Version", bytes(0xA000, "01"), "1."},
    {"Component Configuration", bytes(0x9101, std::string("\1\2\3\0", 4)), "YCbCr"},
    {"Component Configuration", bytes(0x9101, "\7\1\xFF\2"), "Does not existYCb"},
    // Enumerations have gaps and defaults.
    {"Orientation of image", shorts(0x112, {2}),
     row0 + "top of the image, and column 0 is at the visible right-hand side."},
    {"Orientation of image", shorts(0x112, {8}),
     row0 + "left-hand side of the image, and column 0 is at the visible bottom."},
    {"Y and C positioning", shorts(0x213, {2}), "co-sited"},
    {"Metering Mode", shorts(0x9207, {255}), "Other"},
    {"Light Source", shorts(0x9208, {22}), "D75"},
    {"Flash", shorts(0x9209, {9}), "Not defined"},
    {"Flash", shorts(0x9209, {0x59}), "Flash fired, auto mode, red-eye reduction mode"},
    {"Color Space", shorts(0xA001, {65535}), "Uncalibrated"},
    {"Sensing method", shorts(0xA217, {1}), "Not defined"},
    {"File source", bytes(0xA300, "\1"), "Not DSC"},
    {"Scene type", bytes(0xA301, "\1"), "A directly photographed image"},
    {"Scene capture type", shorts(0xA406, {3}), "Night scene"},
    {"Sharpness", shorts(0xA40A, {3}), "reserved"},
};

TEST_F(InfoListTest, ShowEveryKindOfValue) {
  for (const auto& [label, entry, expected] : cases)
    EXPECT_EQ(shown(label, entry), expected) << label;
}

const Picture camera{.image = {exifPointer(), text(0x110, "Model of the picture"),
                               text(0x10F, "Maker of things"), shorts(0x112, {1})},
                     .exif = {bytes(0x927C, "the note"), version(), interoperabilityPointer(),
                              rationals(0x829A, {1, 60})},
                     .interoperability = {bytes(1, "R98", typeAscii)},
                     .thumbnail = {text(0x10F, "not listed")}};

TEST_F(InfoListTest, AppendsInDisplayOrderAndFrees) {
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
  EXPECT_EQ(GetExifInfo(file.c_str(), &list), 1);  // for the next picture
  EXPECT_EQ(itemsIn(list), once);
  EXPECT_EQ(FreeInfoList(&list), 1);
  EXPECT_EQ(FreeInfoList(nullptr), 0);
}

}  // namespace
}  // namespace exifkeep::test

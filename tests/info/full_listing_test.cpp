// The whole list in English: every label, every kind of value in its place, every word.
#include <exifkeep/field_list.h>

#include <algorithm>
#include <map>
#include <sstream>

#include "full_picture.h"
#include "info/listing.h"

namespace exifkeep::test {
namespace {

class FullListingTest : public ReadTest {
 protected:
  FullListingTest() { setLocaleVariables({{"LANGUAGE", "en"}}); }
};

TEST_F(FullListingTest, ShowsEveryFieldInOrder) {
  Items expected;
  for (const auto* fields : {&fullImage, &fullExif})
    for (const auto& [entry, label, shown] : *fields) expected.emplace_back(label, shown);
  ASSERT_EQ(expected.size(), 14u + 47u);
  // Tags that are not known are passed over: none is taken for one that is.
  Picture picture = fullPicture();
  for (auto* entries : {&picture.image, &picture.exif})
    for (uint16_t tag = 0x5000; tag < 0x5200; ++tag) entries->push_back(shorts(tag, {1}));
  for (const Order order : bothOrders) {
    const std::string tiff = tiffBytes(picture, order);
    for (const std::string& file : {tiff, jpegBytes(tiff), jpegBytes(tiff, jfifSegment())})
      EXPECT_EQ(itemsOf(fileOf(file)), expected);
  }
}

// One field alone makes one item: none depends on the presence of another.
TEST_F(FullListingTest, ShowsEveryFieldAlone) {
  for (const auto* fields : {&fullImage, &fullExif})
    for (const auto& [entry, label, shown] : *fields) {
      Picture picture{.image = {exifPointer()}, .exif = {shorts(0xA40C, {1})}};
      (fields == &fullImage ? picture.image : picture.exif).push_back(entry);
      if (entry.tag != 0x9000) picture.exif.push_back(version());
      Items items = itemsOf(fileOf(tiffBytes(picture, Order::mm)));
      if (entry.tag != 0x9000) std::erase(items, Items::value_type("Exif Version", "2.20"));
      EXPECT_EQ(items, (Items{{label, entry.tag == 0x9000 ? "2.20" : shown}})) << entry.tag;
    }
}

// Exif 2.2, 4.6.4 and 4.6.5.
const struct {
  uint16_t tag;
  std::string label, other;  // `other`: for values that have no word
  const char* words;
} enumerations[] = {
    {0x112, "Orientation of image", "reserved",
     "1 Row 0 is at the visible top of the image, and column 0 is at the visible left-hand side.|2 "
     "Row 0 is at the visible top of the image, and column 0 is at the visible right-hand side.|3 "
     "Row 0 is at the visible bottom of the image, and column 0 is at the visible right-hand "
     "side.|4 Row 0 is at the visible bottom of the image, and column 0 is at the visible "
     "left-hand side.|5 Row 0 is at the visible left-hand side of the image, and column 0 is at "
     "the visible top.|6 Row 0 is at the visible right-hand side of the image, and column 0 is at "
     "the visible top.|7 Row 0 is at the visible right-hand side of the image, and column 0 is at "
     "the visible bottom.|8 Row 0 is at the visible left-hand side of the image, and column 0 is "
     "at the visible bottom."},
    {0x128, "Unit of resolution", "reserved", "2 inches|3 centimeters"},
    {0x213, "Y and C positioning", "reserved", "1 centered|2 co-sited"},
    {0x8822, "Exposure program", "reserved",
     "0 Not defined|1 Manual|2 Normal program|3 Aperture priority|4 Shutter priority|5 Creative "
     "program|6 Action program|7 Portrait mode|8 Landscape mode"},
    {0x9207, "Metering Mode", "reserved",
     "0 Unknown|1 Average|2 Center Weighted Average|3 Spot|4 Multispot|5 Pattern|6 Partial|255 "
     "Other"},
    {0x9208, "Light Source", "reserved",
     "0 Unknown|1 Daylight|2 Fluorescent|3 Tungsten|17 Standard light A|18 Standard light B|19 "
     "Standard light C|20 D55|21 D65|22 D75|255 Other"},
    {0x9209, "Flash", "Not defined",
     "0 Flash did not fire|1 Flash fired|5 Strobe light return not detected|7 Strobe light return "
     "detected|13 Flash fired, compulsory flash mode, return light not detected|15 Flash fired, "
     "compulsory flash mode, return light detected|16 Flash did not fire, compulsory flash mode|24 "
     "Flash did not fire, auto mode|25 Flash fired, auto mode|29 Flash fired, auto mode, return "
     "light not detected|31 Flash fired, auto mode, return light detected|32 No flash function|65 "
     "Flash fired, red-eye reduction mode|69 Flash fired, red-eye reduction mode, return light not "
     "detected|71 Flash fired, red-eye reduction mode, return light detected|73 Flash fired, "
     "compulsory flash mode, red-eye reduction mode|77 Flash fired, compulsory flash mode, red-eye "
     "reduction mode, return light not detected|79 Flash fired, compulsory flash mode, red-eye "
     "reduction mode, return light detected|89 Flash fired, auto mode, red-eye reduction mode|93 "
     "Flash fired, auto mode, return light not detected, red-eye reduction mode|95 Flash fired, "
     "auto mode, return light detected, red-eye reduction mode"},
    {0xA001, "Color Space", "reserved", "1 sRGB|65535 Uncalibrated"},
    {0xA210, "Focal plane response unit", "reserved", "2 inches|3 centimeters"},
    {0xA217, "Sensing method", "reserved",
     "1 Not defined|2 One-chip color area sensor|3 Two-chip color area sensor|4 Three-chip color "
     "area sensor|5 Color sequential area sensor|7 Trilinear sensor|8 Color sequential linear "
     "sensor"},
    {0xA300, "File source", "Not DSC", "3 DSC"},
    {0xA301, "Scene type", "reserved", "1 A directly photographed image"},
    {0xA40A, "Sharpness", "reserved", "0 Normal|1 Soft|2 Hard"},
    {0xA409, "Saturation", "reserved", "0 Normal|1 Low saturation|2 High saturation"},
    {0xA408, "Contrast", "reserved", "0 Normal|1 Soft|2 Hard"},
    {0xA407, "Gain control", "reserved",
     "0 None|1 Low gain up|2 High gain up|3 Low gain down|4 High gain down"},
    {0xA406, "Scene capture type", "reserved", "0 Standard|1 Landscape|2 Portrait|3 Night scene"},
    {0xA403, "White balance", "reserved", "0 Auto white balance|1 Manual white balance"},
    {0xA402, "Exposure mode", "reserved", "0 Auto exposure|1 Manual exposure|2 Auto bracket"},
    {0xA401, "Custom image processing", "reserved", "0 Normal process|1 Custom process"},
};

std::map<unsigned, std::string> parsed(const char* words) {
  std::map<unsigned, std::string> byValue;
  std::istringstream stream(words);
  for (std::string word; std::getline(stream, word, '|');)
    byValue[std::stoul(word)] = word.substr(word.find(' ') + 1);
  return byValue;
}

TEST_F(FullListingTest, HasAWordForEveryValue) {
  std::vector<uint16_t> values = {65535};
  for (uint16_t value = 0; value < 256; ++value) values.push_back(value);
  for (const uint16_t value : values) {
    Picture picture{.image = {exifPointer()}, .exif = {version()}};
    Items expected = {{"Exif Version", "2.20"}};
    for (const auto& [tag, label, other, words] : enumerations) {
      const bool isByte = tag == 0xA300 || tag == 0xA301;
      const auto byValue = parsed(words);
      const auto word = byValue.find(isByte ? value % 256u : value);
      expected.emplace_back(label, word == byValue.end() ? other : word->second);
      (tag < 0x8000 ? picture.image : picture.exif)
          .push_back(isByte ? bytes(tag, {static_cast<char>(value)}) : shorts(tag, {value}));
    }
    Items items = itemsOf(fileOf(tiffBytes(picture, Order::ii)));
    std::ranges::sort(items);
    std::ranges::sort(expected);
    EXPECT_EQ(items, expected) << value;
  }
}

// "directory tag name value": numbers, fractions, or text between quotes.
std::string described(const InfoField& field) {
  std::ostringstream text;
  text << static_cast<int>(field.directory) << ' ' << std::hex << field.tag << ' ' << std::dec
       << field.name;
  const bool areFractions = field.kind == InfoField::Kind::rationals;
  for (size_t i = 0; i < field.numbers.size(); ++i)
    text << (areFractions && i % 2 ? '/' : ' ') << field.numbers[i];
  if (!field.bytes.empty()) text << " '" << field.bytes << '\'';
  return text.str();
}

TEST_F(FullListingTest, GivesFieldsAsTheFileHasThem) {
  Picture picture{.image = {exifPointer(), gpsPointer(), text(0x10F, "Maker"), shorts(0x112, {6}),
                            rationals(0x11A, {300, 2})},
                  .exif = {version(),
                           rationals(0x829A, {1, 60}),
                           bytes(0x9101, {1, 2, 3, 0}),
                           shorts(0x8827, {400}),
                           bytes(0x9286, std::string("ASCII\0\0\0hi", 10)),
                           {0x9204, typeSrational, 1, numbers({-2, 3}, 4), 4},
                           bytes(0xA300, {3}),
                           longs(0xA002, {70000}),
                           text(0xA420, "id")},
                  .gps = {bytes(0, {2, 2, 0, 0}, typeByte), text(1, "N"),
                          rationals(2, {43, 1, 28, 1, 2814, 100}), bytes(5, {1}, typeByte),
                          bytes(0x1B, std::string("ASCII\0\0\0GPS", 11)), shorts(0x1E, {1})}};
  const std::string file = fileOf(tiffBytes(picture, Order::mm));
  const Items plain = itemsOf(file);
  FieldList list;
  ASSERT_EQ(GetExifInfo(file.c_str(), &list), 1);
  EXPECT_EQ(itemsIn(list), plain);
  FreeInfoList(&list);
  list.withGps = true;
  ASSERT_EQ(GetExifInfo(file.c_str(), &list), 1);
  std::vector<std::string> fields;
  list.forEach([&](const InfoField& field) { fields.push_back(described(field)); });
  EXPECT_EQ(
      fields,
      (std::vector<std::string>{
          "0 10f Make 'Maker'", "0 112 Orientation 6", "0 11a XResolution 300/2",
          "1 829a ExposureTime 1/60", "1 8827 ISOSpeedRatings 400", "1 9000 ExifVersion '0220'",
          "1 9101 ComponentsConfiguration 1 2 3 0", "1 9204 ExposureBiasValue -2/3",
          std::string("1 9286 UserComment 'ASCII\0\0\0hi'", 31), "1 a002 PixelXDimension 70000",
          "1 a300 FileSource 3", "1 a420 ImageUniqueID 'id'", "2 0 GPSVersionID 2 2 0 0",
          "2 1 GPSLatitudeRef 'N'", "2 2 GPSLatitude 43/1 28/1 2814/100", "2 5 GPSAltitudeRef 1",
          std::string("2 1b GPSProcessingMethod 'ASCII\0\0\0GPS'", 38), "2 1e GPSDifferential 1"}));
  Items items = itemsIn(list);
  ASSERT_EQ(items.size(), plain.size() + 6);
  EXPECT_EQ(Items(items.end() - 6, items.end()), (Items{{"GPSVersionID", "2 2 0 0"},
                                                        {"GPSLatitudeRef", "N"},
                                                        {"GPSLatitude", "43 28 2814/100"},
                                                        {"GPSAltitudeRef", "1"},
                                                        {"GPSProcessingMethod", "GPS"},
                                                        {"GPSDifferential", "1"}}));
}

}  // namespace
}  // namespace exifkeep::test

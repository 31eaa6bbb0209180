// SPDX-License-Identifier: MIT
// The complete list in English: every label, every kind of value, every word.
#include <exifkeep/field_list.h>

#include <algorithm>
#include <map>
#include <sstream>

#include "full_picture.h"
#include "read/reading.h"

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
  // Unknown tags are skipped and not mistaken for known ones.
  Picture picture = fullPicture();
  for (auto* entries : {&picture.image, &picture.exif})
    for (uint16_t tag = 0x5000; tag < 0x5200; ++tag) entries->push_back(shorts(tag, {1}));
  for (const Order order : bothOrders) {
    const std::string tiff = tiffBytes(picture, order);
    for (const std::string& file : {tiff, jpegBytes(tiff), jpegBytes(tiff, jfifSegment())})
      EXPECT_EQ(itemsOf(fileOf(file)), expected);
  }
}

// A single field gives a single item: none depends on another.
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

// The line of a tag in words.txt.
struct Words {
  uint16_t tag = 0;
  std::string label, other;  // `other`: for all other values
  std::map<unsigned, std::string> byValue = {};
};

std::vector<Words> allWords() {
  std::vector<Words> all;
  std::ifstream file(EXIFKEEP_SOURCE_DIR "/tests/info/words.txt");
  std::string line, word;
  std::getline(file, line);  // says what follows
  while (std::getline(file, line)) {
    std::istringstream fields(line);
    std::getline(fields, word, '|');
    Words& words = all.emplace_back();
    words.tag = static_cast<uint16_t>(std::stoul(word, nullptr, 16));
    std::getline(std::getline(fields, words.label, '|'), words.other, '|');
    while (std::getline(fields, word, '|'))
      words.byValue[std::stoul(word)] = word.substr(word.find(' ') + 1);
  }
  return all;
}

TEST_F(FullListingTest, HasAWordForEveryValue) {
  const std::vector<Words> all = allWords();
  ASSERT_EQ(all.size(), 20u);
  std::vector<uint16_t> values = {65535};
  for (uint16_t value = 0; value < 256; ++value) values.push_back(value);
  for (const uint16_t value : values) {
    Picture picture{.image = {exifPointer()}, .exif = {version()}};
    Items expected = {{"Exif Version", "2.20"}};
    for (const auto& [tag, label, other, byValue] : all) {
      const bool isByte = tag == 0xA300 || tag == 0xA301;
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

TEST_F(FullListingTest, ListsValuesAsStored) {
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

// SPDX-License-Identifier: MIT
// The full picture in written files: every entry of every directory, in order, with its type, count
// and value.
#include <exifkeep/exifkeep.h>

#include <array>
#include <cstdio>
#include <regex>
#include <set>

#include "full_picture.h"
#include "tiff/tiff_block.h"
#include "write/jpeg_segment.h"
#include "write/save_fixture.h"

namespace exifkeep::test {
namespace {

// An entry as found by a TIFF 6.0 reader in a little-endian file.
struct WrittenEntry {
  uint16_t tag;
  char type;  // byte, ascii, short, long, rational, undefined, negative (SRATIONAL)
  uint32_t count;
  std::string value;  // four bytes, or more
};

struct WrittenDirectory {
  std::vector<WrittenEntry> entries;
  uint32_t next = 0;

  WrittenDirectory(const std::string& tiff, uint32_t at) {
    if (at == 0) return;
    const uint32_t count = numberAt(tiff, at, 2);
    next = numberAt(tiff, at + 2 + 12 * count, 4);
    size_t area = at + 2 + 12 * count + 4;  // then the values, at even positions without gaps
    for (uint32_t i = 0; i < count; ++i) {
      const uint32_t entry = at + 2 + 12 * i, type = numberAt(tiff, entry + 2, 2);
      const uint32_t number = numberAt(tiff, entry + 4, 4);
      const uint32_t size = number * uint32_t(" 1124811248"[type] - '0');
      // SHORTs are after the directory even if they would fit into the entry.
      const bool isInEntry = size <= 4 && !(type == typeShort && number > 1);
      const size_t valueAt = isInEntry ? entry + 8 : numberAt(tiff, entry + 8, 4);
      EXPECT_TRUE(isInEntry || valueAt == area);
      if (!isInEntry) area += size + size % 2;
      entries.push_back({uint16_t(numberAt(tiff, entry, 2)), " baslr u  n"[type], number,
                         tiff.substr(valueAt, isInEntry ? 4 : size)});
    }
  }
  uint32_t pointer(uint16_t tag) const {
    for (const WrittenEntry& entry : entries)
      if (entry.tag == tag) return numberAt(entry.value, 0, 4);
    return 0;
  }
  std::string shape() const {
    std::string text;
    for (const WrittenEntry& entry : entries) {
      char one[24];
      std::snprintf(one, sizeof one, " %04X%c%u", entry.tag, entry.type, entry.count);
      text += one;
    }
    return text;
  }
};

struct WrittenFile {
  explicit WrittenFile(const std::string& tiff)
      : image(tiff, numberAt(tiff, 4, 4)),
        exif(tiff, image.pointer(0x8769)),
        interoperability(tiff, exif.pointer(0xA005)),
        gps(tiff, image.pointer(0x8825)),
        thumbnail(tiff, image.next) {}
  std::array<std::string, 5> shape() const {
    return {image.shape(), exif.shape(), interoperability.shape(), gps.shape(), thumbnail.shape()};
  }
  WrittenDirectory image, exif, interoperability, gps, thumbnail;
};

// The entries of the five directories: tag, first letter of the type, count.
using Shape = std::array<std::string, 5>;
const std::string exifBeforeConfiguration = " 9000u4 9003a20 9004a20";
const std::string exifAfterConfiguration =
    " 9201n1 9202r1 9203n1 9204n1 9205r1 9206r1 9207s1 9208s1 9209s1 920Ar1 829Ar1 829Dr1 9102r1"
    " 927Cu12 9286u308 A000u4 A001s1 A002l1 A003l1 A004a14 A214s2 A300u1 A40Cs1 A40As1 A409s1"
    " A408s1 A407s1 A406s1 A404r1 A403s1 A402s1 A401s1 9214s4 8822s1 8824a35 8827s1 8828a256"
    " 9290a35 9292a35 9291a35 A20Br1 A20Er1 A20Fr1 A210s1 A215r1 A301u1 A405s1 A420a35 A217s1"
    " A005l1";
const std::string fullExifShape = exifBeforeConfiguration + exifAfterConfiguration;
const std::string interoperabilityShape = " 0001a4 0002u4";
const std::string fullGpsShape =
    " 0000u4 0006r1 0005u2 001Ca256 001Da12 0018r1 0017u2 001Ar1 0019u2 0014r3 0015u2 001Es1 000Br1"
    " 0011r1 0010u2 0002r3 0001u2 0004r3 0003u2 0012a256 000Au2 001Ba256 0008a256 000Dr1 000Cu2"
    " 0009u2 0007r3 000Fr1 000Eu2";
const std::string describing =
    " 0110a256 010Ea256 8298a256 0100l1 0101l1 0102s3 0103s1 011Ar1"
    " 011Br1 0128s1 0131a256";
const std::string colours = " 013Er2 013Fr6 0214r6 0112s1 0132a20 0211r3 0213s1";
const std::string strip = " 0111l1 0117l1 0116s1";

const Shape fullJpeg = {" 010Fa256" + describing + colours + " 8769l1 8825l1", fullExifShape,
                        interoperabilityShape, fullGpsShape,
                        " 010Fa256" + describing + colours + " 0201l1 0202l1"};
const Shape fullTiff = {
    " 010Fa256 0115s1 011Cs1 0106s1" + describing + colours + strip + " 8769l1 8825l1",
    fullExifShape, interoperabilityShape, fullGpsShape,
    " 010Fa256" + describing + " 0106s1" + strip + colours};
// For a source with a version and an orientation in IFD1.
const Shape smallJpeg = {" 011Ar1 011Br1 0132a20 8769l1", " 9000u4", "", "",
                         " 011Ar1 011Br1 0112s1 0201l1 0202l1"};
const Shape smallTiff = {
    " 0115s1 0106s1 0100l1 0101l1 0102s3 0103s1 011Ar1 011Br1 0132a20" + strip + " 8769l1",
    " 9000u4", "", "", " 011Ar1 011Br1 0106s1" + strip + " 0112s1"};
const Shape newJpeg = {
    " 010Ea14 010Fa8 0110a8 0112s1 011Ar1 011Br1 0128s1 0132a20 0213s1 8298a29 0131a256 8769l1",
    " 829Ar1 829Dr1 9000u4 9003a20 9004a20 9101u4 9102r1 9201n1 9202r1 9203n1 9204n1 9205r1 9206r1"
    " 9207s1 9208s1 9209s1 920Ar1 927Cu12 9286u308 A000u4 A001s1 A002l1 A003l1 A004a14 A214s2"
    " A300u1 A005l1",
    interoperabilityShape, "", " 0103s1 011Ar1 011Br1 0128s1 0201l1 0202l1 0213s1"};
const Shape newTiff = {
    " 010Fa8 0106s1 0110a8 010Ea9 8298a29 011Ar1 011Br1 0128s1 0131a256 0112s1 0132a20 0213s1" +
        strip + " 0115s1 011Cs1 0100l1 0101l1 0102s3 0103s1 013Er2 013Fr6 0214r6 0211r3 8769l1",
    exifBeforeConfiguration + " 9101u4" + exifAfterConfiguration, interoperabilityShape, "",
    " 0100l1 0101l1 0102s3 0103s1 011Ar1 011Br1 0128s1 0106s1" + strip + " 0132a20"};

// Values are from `fixed` or else from `source`; positions are checked by what is there.
void expectValues(const WrittenDirectory& written, const std::vector<Entry>& source,
                  const std::vector<Entry>& fixed = {}) {
  const std::set<uint16_t> positions = {0x111, 0x201, 0x202, 0x8769, 0x8825, 0xA005};
  const std::regex time(R"(\d{4}:\d\d:\d\d \d\d:\d\d:\d\d)");
  for (const auto& [tag, type, count, value] : written.entries) {
    SCOPED_TRACE(tag);
    std::string expected = "nothing";
    for (const auto* entries : {&source, &fixed})
      for (const Entry& entry : *entries)
        if (entry.tag == tag) expected = entry.value;
    if (type == 'a') expected = expected.substr(0, count - 1);
    expected.resize(value.size());
    const bool fits = tag == 0x132 ? std::regex_match(value.c_str(), time) : value == expected;
    EXPECT_TRUE(positions.contains(tag) || fits) << value << " for " << expected;
  }
}

// In every TIFF file, whatever the source had.
std::vector<Entry> stripOf(unsigned width, unsigned height) {
  return {longs(0x100, {width}), longs(0x101, {height}),  shorts(0x102, {8, 8, 8}),
          shorts(0x103, {1}),    shorts(0x106, {2}),      shorts(0x115, {3}),
          shorts(0x11C, {1}),    shorts(0x116, {height}), longs(0x117, {width * height * 3})};
}
std::vector<Entry> both(std::vector<Entry> entries, const std::vector<Entry>& more) {
  entries.insert(entries.end(), more.begin(), more.end());
  return entries;
}

// The new ReferenceBlackWhite, unless the source's pixels were RGB.
const Entry rgbRange = rationals(0x214, {0, 1, 255, 1, 0, 1, 255, 1, 0, 1, 255, 1});

class FullDirectoriesTest : public SaveTest {
 protected:
  WrittenFile saved(const Picture& source, bool isJpeg, Order order) {
    const std::string tiff = tiffBytes(source, order), end = isJpeg ? ".jpg" : ".tif";
    write("a" + end, isJpeg ? jpegBytes(tiff, jfifSegment()) : tiff);
    EXPECT_EQ(SaveFile(path("a" + end).c_str(), path("b" + end).c_str(), &picture_, nullptr), 1);
    const std::string file = read("b" + end);
    return WrittenFile(isJpeg ? segmentOf(file).substr(10) : file);
  }

  PRaster picture_ = picture(64, 48);
};

TEST_F(FullDirectoriesTest, OfAPictureWithEveryField) {
  const Picture source = fullPicture();
  for (const Order order : bothOrders)
    for (const bool isJpeg : {true, false}) {
      const WrittenFile file = saved(source, isJpeg, order);
      EXPECT_EQ(file.shape(), isJpeg ? fullJpeg : fullTiff);
      expectValues(file.image, source.image,
                   isJpeg ? std::vector<Entry>() : both(stripOf(64, 48), {rgbRange}));
      expectValues(file.exif, source.exif);
      expectValues(file.interoperability, source.interoperability);
      expectValues(file.gps, source.gps);
      expectValues(file.thumbnail, source.thumbnail,
                   isJpeg ? std::vector<Entry>() : stripOf(160, 120));
    }
}

TEST_F(FullDirectoriesTest, OfAPictureWithFewFields) {
  const Picture source{
      .image = {exifPointer()}, .exif = {version()}, .thumbnail = {shorts(0x112, {3})}};
  const std::vector<Entry> resolution = {rationals(0x11A, {72, 1}), rationals(0x11B, {150, 1})};
  for (const bool isJpeg : {true, false}) {
    const WrittenFile file = saved(source, isJpeg, Order::ii);
    EXPECT_EQ(file.shape(), isJpeg ? smallJpeg : smallTiff);
    expectValues(file.image, resolution, isJpeg ? resolution : stripOf(64, 48));
    expectValues(file.exif, source.exif);
    expectValues(file.thumbnail, both(source.thumbnail, resolution),
                 isJpeg ? resolution : stripOf(160, 120));
  }
}

// The picture's own fields are present and must be ignored.
TEST_F(FullDirectoriesTest, WithDefaultFields) {
  const Picture source = fullPicture();
  write("a.jpg", tiffBytes(source, Order::mm));
  Reading records = recordsOf("a.jpg");
  const std::vector<Entry> fixed = {
      text(0x10F, "Orvalle"), text(0x110, "Tesslar"), text(0x8298, "Copyright (c) by the author."),
      shorts(0x112, {1}),     shorts(0x128, {2}),     shorts(0x213, {2})};
  const std::vector<Entry> fixedExif = {
      bytes(0x9000, "0210"), bytes(0x9101, std::string("\1\2\3\0", 4)), shorts(0xA001, {1}),
      longs(0xA002, {64}), longs(0xA003, {48})};
  const GlobalBlock segment =
      buildSegmentWithDefaults(reader_.codec(), picture_, nullptr, records.exif, records.primary);
  const FrontPart front =
      buildNewTiffBlock(reader_, picture_, nullptr, records.exif, records.primary);
  const BlockLock segmentBytes(segment), frontBytes(front.block);
  ASSERT_TRUE(segmentBytes.bytes() && frontBytes.bytes());

  const WrittenFile jpeg(std::string(segmentBytes.bytes() + 10,
                                     segmentBytes.bytes() + segmentSize(segmentBytes.bytes())));
  EXPECT_EQ(jpeg.shape(), newJpeg);
  expectValues(jpeg.image, source.image,
               both(fixed, {text(0x10E, "Exif_JPEG_422"), rationals(0x11A, {72, 1}),
                            rationals(0x11B, {150, 1})}));
  expectValues(jpeg.exif, source.exif, fixedExif);
  expectValues(jpeg.interoperability, source.interoperability);
  expectValues(jpeg.thumbnail, {shorts(0x103, {6}), rationals(0x11A, {72, 1}),
                                rationals(0x11B, {72, 1}), shorts(0x128, {2}), shorts(0x213, {2})});

  const WrittenFile tiff(std::string(frontBytes.bytes(), frontBytes.bytes() + front.size));
  EXPECT_EQ(tiff.shape(), newTiff);
  expectValues(tiff.image, both(source.image, stripOf(64, 48)),
               both(fixed, {text(0x10E, "Exif_TIF"), shorts(0x102, {5, 6, 7}), shorts(0x103, {9}),
                            shorts(0x115, {4}), shorts(0x11C, {2})}));
  expectValues(tiff.exif, source.exif, fixedExif);
  // The codec writes that the thumbnail's resolution is unknown.
  expectValues(tiff.thumbnail, stripOf(160, 120),
               {rationals(0x11A, {1, 1}), rationals(0x11B, {1, 1}), shorts(0x128, {1})});
}

}  // namespace
}  // namespace exifkeep::test

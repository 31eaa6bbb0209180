// SPDX-License-Identifier: MIT
#include <filesystem>

#include "read/reading.h"

namespace exifkeep::test {
namespace {

using ProbeTest = ReadTest;

const Picture plain{.image = {exifPointer()}, .exif = {version()}};

std::string tiffOf(const Picture& picture) {
  return tiffBytes(picture, Order::ii);
}

// Replaces bytes of a file.
std::string patched(std::string file, size_t at, const std::string& bytes) {
  return file.replace(at, bytes.size(), bytes);
}

TEST_F(ProbeTest, TheExtensionAdmitsAFileAndItsContentDecidesTheKind) {
  std::filesystem::create_directories(path("a.jpg"));
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(path(""));
  const std::pair<std::string, bool> cases[] = {
      {"x.JPG", true},      {"x.Jpeg", true}, {"x.jpe", true},      {"x.TIF", true},
      {"x.y.tiff", true},   {"jpg", true},    {"a.jpg/.tif", true}, {"x.jfif", false},
      {"x.tif.bak", false}, {"x", false},     {"x.", false},        {"x.jpg ", false},
      {"a.jpg/jpg", false}};
  for (const std::string& content : {tiffOf(plain), jpegBytes(tiffOf(plain))})
    for (const auto& [name, expected] : cases) {
      writeFile(name, content);
      ExifReader reader;
      EXPECT_EQ(reader.probeFile(name.c_str()), expected) << name;
      EXPECT_EQ(reader.isJpeg, expected && content[0] != 'I') << name;
    }
  EXPECT_FALSE(ExifReader().probeFile(""));
  std::filesystem::current_path(before);
}

TEST_F(ProbeTest, LooksAtFixedPositionsNotSegments) {
  const std::string tiff = tiffOf(plain), jpeg = jpegBytes(tiff), jfif = jfifSegment();
  const std::string identifier("Exif\0\0", 6);
  // The number is where the TIFF structure begins; -1: no Exif file.
  const std::tuple<const char*, std::string, int> cases[] = {
      {"SOI, APP1", jpeg, 12},
      {"SOI, APP0, APP1", jpegBytes(tiff, jfif), 30},
      {"another marker after APP0 is not compared",
       patched(jpegBytes(tiff, jfif), 2 + jfif.size(), "\xFF\xE2"), 30},
      {"an APP0 that ends in an APP1 marker hides the real one",
       jpegBytes(tiff, segment(0xFFE0, "JFIF\xFF\xE1")), -1},
      // The identifier is then expected two bytes earlier, as in a segment without a length field,
      // and offsets count from two bytes after the start of the header.
      {"an APP1 marker at the end of APP0 is taken",
       jpegStart + segment(0xFFE0, "JFIF\xFF\xE1") + "\xFF\xE1" + identifier +
           tiffBytes(plain, Order::ii, uint32_t(-2)),
       22},
      {"a foreign first segment with Exif at byte 8",
       jpegStart + segment(0xFFE2, "++" + identifier + tiffBytes(plain, Order::ii, 2)), 12},
      {"a foreign first segment", jpegBytes(tiff, segment(0xFFFE, "comment")), -1},
      {"two APP0 segments", jpegBytes(tiff, jfif + jfif), -1},
      {"an APP0 of the greatest length: its size is kept in 16 bits",
       jpegBytes(tiffBytes(plain, Order::ii, 0x10000), segment(0xFFE0, std::string(0xFFFD, ' '))),
       13},
      {"another identifier", patched(jpeg, 6, "exif"), -1},
      {"the zero bytes after the identifier are not compared", patched(jpeg, 10, "zz"), 12},
      {"another byte order mark", patched(jpeg, 12, "IM"), -1},
      {"42 is not compared", patched(jpeg, 14, "zz"), 12},
      {"TIFF", tiff, 0},
  };
  ExifReader reader;  // the same for all: a probe must not affect the next
  for (const auto& [what, file, base] : cases) {
    EXPECT_EQ(reader.probeFile(fileOf(file).c_str()), base >= 0) << what;
    if (base < 0) continue;
    EXPECT_EQ(reader.tiffBase(), uint32_t(base)) << what;
    EXPECT_EQ(reader.isJpeg, base > 0) << what;
    EXPECT_EQ(reader.littleEndian, 1) << what;
    EXPECT_EQ(reader.exifIfdOffset - reader.primaryIfdOffset, 2 + 12 + 4) << what;
  }
}

TEST_F(ProbeTest, NeedsAnExifDirectoryWithAVersion) {
  constexpr size_t imageCount = 8, exifCount = 8 + 2 + 12 + 4;
  const Picture noVersion{.image = {exifPointer()}, .exif = {shorts(0x9209, {0})}};
  const Picture unsorted{.image = {longs(0xFFFF, {1}), exifPointer(), shorts(0x112, {1})},
                         .exif = {shorts(0xA001, {1}), version()}};
  const Picture firstCounts{.image = {exifPointer(), longs(0x8769, {4})}, .exif = {version()}};
  const Picture firstLies{.image = {longs(0x8769, {4}), exifPointer()}, .exif = {version()}};
  for (const Order order : bothOrders) {
    const auto tiff = [&](const Picture& picture) { return tiffBytes(picture, order); };
    const auto counting = [&](size_t at, int count) {
      return patched(tiff(plain), at, number(count, 2, order));
    };
    const std::tuple<const char*, std::string, bool> cases[] = {
        {"any order of entries", tiff(unsorted), true},
        {"the first Exif pointer counts", tiff(firstCounts), true},
        {"the first Exif pointer leads nowhere", tiff(firstLies), false},
        {"no version", tiff(noVersion), false},
        {"IFD0 count 0", counting(imageCount, 0), false},
        {"IFD0 count 32768", counting(imageCount, 0x8000), false},
        {"Exif count 0", counting(exifCount, 0), false},
        {"Exif count 65535", counting(exifCount, 0xFFFF), false},
        {"the file ends after the version's tag", tiff(plain).substr(0, exifCount + 4), true},
        {"the file ends in the version's tag", tiff(plain).substr(0, exifCount + 3), false},
    };
    for (const auto& [what, file, expected] : cases)
      for (const std::string& content : {file, jpegStart + segment(0xFFE1, "Exif--" + file)})
        EXPECT_EQ(ExifReader().probeFile(fileOf(content).c_str()), expected) << what;
  }
}

}  // namespace
}  // namespace exifkeep::test

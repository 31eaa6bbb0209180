// SPDX-License-Identifier: MIT
// Small files designed to take seconds or hundreds of MiB are rejected before they do.
#include <exifkeep/exifkeep.h>
#include <zlib.h>

#include "picture_fixture.h"
#include "tiff_builder.h"

namespace exifkeep::test {
namespace {

struct HostilePicture {
  const char* name;
  std::string file;
  uint64_t sparseSize = 0;  // the rest of the file, up to this size, is a hole
  bool hasThumbnail = false;
  bool isDecoded = false;  // cheaply
};

std::string deflated(const std::string& bytes) {
  uLongf length = compressBound(bytes.size());
  std::string packed(length, '\0');
  compress2(reinterpret_cast<Bytef*>(packed.data()), &length,
            reinterpret_cast<const Bytef*>(bytes.data()), bytes.size(), Z_BEST_COMPRESSION);
  packed.resize(length);
  return packed;
}

Entry longsOf(uint16_t tag, size_t count, uint32_t value) {
  Entry entry = longs(tag, {});
  for (size_t i = 0; i < count; ++i) entry.value += number(value, 4);
  entry.count = static_cast<uint32_t>(count);
  entry.isOutOfLine = count > 1;
  return entry;
}

// An RGB picture with more entries. `more` is called with the position of the bytes after the
// directories.
std::string hostileTiff(uint32_t width, uint32_t height, uint32_t compression, auto more,
                        const std::string& data) {
  const auto fileFor = [&](size_t position) {
    std::vector<Entry> entries = {longs(0x100, {width}),
                                  longs(0x101, {height}),
                                  shorts(0x102, {8, 8, 8}),
                                  shorts(0x103, {compression}),
                                  shorts(0x106, {2}),
                                  shorts(0x115, {3}),
                                  exifPointer()};
    for (const Entry& entry : more(static_cast<uint32_t>(position))) entries.push_back(entry);
    return tiffBytes({.image = entries, .exif = {bytes(0x9000, "0220")}}, Order::ii);
  };
  return fileFor(fileFor(0).size()) + data;
}

// A picture one pixel wide, all of whose tiles, of 94 MiB each, are the same bytes of the file.
std::string repeatedTile(uint32_t height) {
  constexpr uint32_t tileWidth = 16384, tileLength = 2000;
  const std::string tile = deflated(std::string(size_t{3} * tileWidth * tileLength, '\0'));
  const auto entries = [&](uint32_t position) {
    const size_t count = (height + tileLength - 1) / tileLength;
    return std::vector{longs(0x142, {tileWidth}), longs(0x143, {tileLength}),
                       longsOf(0x144, count, position),
                       longsOf(0x145, count, static_cast<uint32_t>(tile.size()))};
  };
  return hostileTiff(1, height, 8, entries, tile);
}

// Strips of one row and one megabyte, which is the same for all.
std::string overlappingStrips(uint32_t height) {
  constexpr uint32_t megabyte = 1000000;
  const auto entries = [&](uint32_t position) {
    return std::vector{longs(0x116, {1}), longsOf(0x111, height, position),
                       longsOf(0x117, height, megabyte)};
  };
  return hostileTiff(1, height, 1, entries, std::string(megabyte, 'x'));
}

// Directory entries that the decoder does not need, with the whole file as the value of each.
std::string largeForeignEntries() {
  constexpr uint32_t megabyte = 1 << 20;
  const auto entries = [](uint32_t position) {
    std::vector all = {longs(0x111, {position}), longs(0x117, {192})};
    for (uint16_t tag = 0xC800; tag < 0xC800 + 1000; ++tag)
      all.push_back(field(tag, typeUndefined, megabyte, position));
    return all;
  };
  return hostileTiff(8, 8, 1, entries, std::string(megabyte, 'x'));
}

// `png` with texts that expand a thousand times.
std::string withTexts(std::string png) {
  constexpr size_t afterHeader = 8 + 25;
  const std::string text = "zTXt" + std::string("k\0\0", 3) + deflated(std::string(8000000, ' '));
  const auto sum = crc32(0, reinterpret_cast<const Bytef*>(text.data()), uInt(text.size()));
  const std::string chunk =
      number(text.size() - 4, 4, Order::mm) + text + number(sum, 4, Order::mm);
  while (png.size() < 1000000) png.insert(afterHeader, chunk);
  return png;
}

std::vector<HostilePicture> hostilePictures(const std::string& jpeg, const std::string& png) {
  constexpr uint32_t gigabyte = 1 << 30;
  const std::string tile = repeatedTile(400000), strips = overlappingStrips(200000);
  const std::string texts = withTexts(png);
  const Picture sparse{
      .image = {exifPointer()},
      .exif = {bytes(0x9000, "0220")},
      .thumbnail = {shorts(0x103, {6}), longs(0x201, {8}), longs(0x202, {gigabyte})}};
  return {{"tile.tif", tile},
          {"strips.tif", strips},
          {"entries.tif", largeForeignEntries(), 0, false, true},
          {"texts.png", texts},
          {"tile_as_thumbnail.jpg", withThumbnail(jpeg, tile), 0, true},
          {"strips_as_thumbnail.jpg", withThumbnail(jpeg, strips), 0, true},
          {"texts_as_thumbnail.jpg", withThumbnail(jpeg, texts), 0, true},
          {"sparse_thumbnail.tif", tiffBytes(sparse, Order::ii), gigabyte, true}};
}

using HostilePictures = ScratchTest;

TEST_F(HostilePictures, AreRejectedBeforeDecoding) {
  PRaster ordinary = patterned(24, 40, 30);
  ASSERT_EQ(save(path("a.jpg"), ordinary) + save(path("a.png"), ordinary), 2);
  for (const auto& [name, bytes, sparseSize, hasThumbnail, isDecoded] :
       hostilePictures(readFile(path("a.jpg")), readFile(path("a.png")))) {
    SCOPED_TRACE(name);
    writeFile(path(name), bytes);
    if (sparseSize) std::filesystem::resize_file(path(name), sparseSize);
    const long before = largestAddressSpace();
    PRaster image, thumbnail = patterned(8, 2, 1);
    const bool isPng = path(name).ends_with(".png");
    EXPECT_EQ(OpenExifFile(path(name).c_str(), &image, &thumbnail), isPng ? 0 : 1);
    EXPECT_EQ(image.IsEmpty(), path(name).ends_with(".jpg") || isDecoded ? 0 : 1);
    EXPECT_EQ(thumbnail.IsEmpty(), hasThumbnail ? 1 : 0);
    EXPECT_EQ(load(path(name)).has_value(), isPng || !image.IsEmpty());
    EXPECT_LT(largestAddressSpace() - before, 32 * 1024);
  }
}

}  // namespace
}  // namespace exifkeep::test

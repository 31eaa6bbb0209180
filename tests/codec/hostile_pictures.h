// Small files made to cost a decoder seconds or hundreds of MiB.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tiff_builder.h"

namespace exifkeep::test {

struct HostilePicture {
  const char* name;
  std::string file;
  uint64_t sparseSize = 0;  // the file continues as a hole up to this size
  bool hasThumbnail = false;
  bool isDecoded = false;  // cheaply
};

inline std::string deflated(const std::string& bytes) {
  uLongf length = compressBound(bytes.size());
  std::string packed(length, '\0');
  compress2(reinterpret_cast<Bytef*>(packed.data()), &length,
            reinterpret_cast<const Bytef*>(bytes.data()), bytes.size(), Z_BEST_COMPRESSION);
  packed.resize(length);
  return packed;
}

// `entries` gets the position of the bytes that follow the directories.
inline std::string exifTiffWith(auto entries, const std::string& data) {
  const auto fileFor = [&](uint32_t position) {
    Picture picture{.image = entries(position), .exif = {bytes(0x9000, "0220")}};
    picture.image.push_back(exifPointer());
    return tiffBytes(picture, Order::ii);
  };
  return fileFor(static_cast<uint32_t>(fileFor(0).size())) + data;
}

inline Entry longsOf(uint16_t tag, size_t count, uint32_t value) {
  Entry entry = longs(tag, {});
  for (size_t i = 0; i < count; ++i) entry.value += number(value, 4);
  entry.count = static_cast<uint32_t>(count);
  entry.isOutOfLine = count > 1;
  return entry;
}

inline std::vector<Entry> rgbPicture(uint32_t width, uint32_t height, uint32_t compression) {
  return {longs(0x100, {width}),        longs(0x101, {height}), shorts(0x102, {8, 8, 8}),
          shorts(0x103, {compression}), shorts(0x106, {2}),     shorts(0x115, {3})};
}

// A picture one pixel wide whose tiles, of 94 MiB each, are all the same bytes of the file.
inline std::string repeatedTile(uint32_t height) {
  constexpr uint32_t tileWidth = 16384, tileLength = 2000;
  const std::string tile = deflated(std::string(size_t{3} * tileWidth * tileLength, '\0'));
  const size_t count = (height + tileLength - 1) / tileLength;
  return exifTiffWith(
      [&](uint32_t position) {
        std::vector<Entry> entries = rgbPicture(1, height, 8);
        entries.insert(entries.end(), {longs(0x142, {tileWidth}), longs(0x143, {tileLength}),
                                       longsOf(0x144, count, position),
                                       longsOf(0x145, count, static_cast<uint32_t>(tile.size()))});
        return entries;
      },
      tile);
}

// Strips of one row and a megabyte, all of them the same megabyte.
inline std::string overlappingStrips(uint32_t height) {
  constexpr uint32_t megabyte = 1000000;
  return exifTiffWith(
      [&](uint32_t position) {
        std::vector<Entry> entries = rgbPicture(1, height, 1);
        entries.insert(entries.end(), {longs(0x116, {1}), longsOf(0x111, height, position),
                                       longsOf(0x117, height, megabyte)});
        return entries;
      },
      std::string(megabyte, 'x'));
}

// Directory entries that the decoder has no use for, each of which is the whole file.
inline std::string largeForeignEntries() {
  constexpr uint32_t megabyte = 1 << 20;
  return exifTiffWith(
      [&](uint32_t position) {
        std::vector<Entry> entries = rgbPicture(8, 8, 1);
        entries.insert(entries.end(), {longs(0x111, {position}), longs(0x117, {192})});
        for (uint16_t i = 0; i < 1000; ++i)
          entries.push_back(
              field(static_cast<uint16_t>(0xC800 + i), typeUndefined, megabyte, position));
        return entries;
      },
      std::string(megabyte, 'x'));
}

inline std::string pngChunk(const std::string& type, const std::string& data) {
  const std::string checked = type + data;
  const auto sum =
      crc32(0, reinterpret_cast<const Bytef*>(checked.data()), static_cast<uInt>(checked.size()));
  return number(data.size(), 4, Order::mm) + checked + number(sum, 4, Order::mm);
}

// RGB, 8 bits.
inline std::string pngPicture(uint32_t width, uint32_t height, const std::string& chunks,
                              const std::string& stored) {
  return "\x89PNG\r\n\x1A\n" +
         pngChunk("IHDR", number(width, 4, Order::mm) + number(height, 4, Order::mm) +
                              std::string("\x08\x02\0\0\0", 5)) +
         chunks + pngChunk("IDAT", deflated(stored)) + pngChunk("IEND", "");
}

inline std::string compressedTexts() {
  const std::string text =
      pngChunk("zTXt", std::string("k\0\0", 3) + deflated(std::string(8000000, ' ')));
  std::string chunks;
  while (chunks.size() < 1000000) chunks += text;
  return pngPicture(1, 1, chunks, std::string(4, '\0'));
}

// An ordinary picture, `thumbnail` where its directory says that a JPEG thumbnail is.
inline std::string withThumbnail(const std::string& jpeg, const std::string& thumbnail) {
  Picture picture{.image = {exifPointer()}, .exif = {bytes(0x9000, "0220")}};
  const auto fileFor = [&](size_t position) {
    picture.thumbnail = {shorts(0x103, {6}), longs(0x201, {static_cast<uint32_t>(position)}),
                         longs(0x202, {static_cast<uint32_t>(thumbnail.size())})};
    return jpegStart + segment(0xFFE1, std::string("Exif\0\0", 6) + tiffBytes(picture, Order::ii)) +
           jpeg.substr(2);
  };
  constexpr size_t base = 12;
  return fileFor(fileFor(0).size() - base) + thumbnail;
}

inline std::vector<HostilePicture> hostilePictures(const std::string& jpeg) {
  constexpr uint32_t gigabyte = 1 << 30, most = 0xFFFFFFFF;
  const std::string tile = repeatedTile(400000), strips = overlappingStrips(200000);
  const std::string texts = compressedTexts();
  const Picture sparse{
      .image = {exifPointer()},
      .exif = {bytes(0x9000, "0220")},
      .thumbnail = {shorts(0x103, {6}), longs(0x201, {8}), longs(0x202, {gigabyte})}};
  const Picture notes{.image = {exifPointer()},
                      .exif = {bytes(0x9000, "0220"), field(0x927C, typeUndefined, most, 8),
                               field(0x9286, typeUndefined, most, 8)}};
  return {{"tall_tile.tif", repeatedTile(22000000)},
          {"tile.tif", tile},
          {"strips.tif", strips},
          {"entries.tif", largeForeignEntries(), 0, false, true},
          {"texts.png", texts},
          {"tile_as_thumbnail.jpg", withThumbnail(jpeg, tile), 0, true},
          {"strips_as_thumbnail.jpg", withThumbnail(jpeg, strips), 0, true},
          {"texts_as_thumbnail.jpg", withThumbnail(jpeg, texts), 0, true},
          {"sparse_thumbnail.tif", tiffBytes(sparse, Order::ii), gigabyte, true},
          {"sparse_notes.tif", tiffBytes(notes, Order::ii), uint64_t{768} << 20}};
}

}  // namespace exifkeep::test

// SPDX-License-Identifier: MIT
// Builds small Exif TIFF structures, and JPEG files with them, from a description, in either byte
// order. Nothing is added: entries are in the given order, pointers are ordinary entries, and
// counts, types and offsets may be wrong.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace exifkeep::test {

enum class Order { ii, mm };
enum class Directory { image, exif, interoperability, gps, thumbnail };

// Value types of TIFF 6.0, section 2.
inline constexpr uint16_t typeByte = 1, typeAscii = 2, typeShort = 3, typeLong = 4,
                          typeRational = 5, typeUndefined = 7, typeSrational = 10;

struct Entry {
  uint16_t tag;
  uint16_t type;
  uint32_t count;
  std::string value;  // little-endian, in units of `unit` bytes
  unsigned unit = 1;
  bool isOutOfLine = value.size() > 4;
  std::optional<Directory> target = {};  // the value is the position of this directory

  Entry atOffset() const {
    Entry entry = *this;
    entry.isOutOfLine = true;
    return entry;
  }
  Entry withCount(uint32_t other) const {
    Entry entry = *this;
    entry.count = other;
    return entry;
  }
};

inline std::string number(uint64_t value, unsigned width, Order order = Order::ii) {
  std::string bytes;
  for (unsigned i = 0; i < width; ++i)
    bytes += static_cast<char>(value >> 8 * (order == Order::ii ? i : width - 1 - i));
  return bytes;
}

inline std::string numbers(std::initializer_list<int64_t> values, unsigned width) {
  std::string bytes;
  for (const int64_t value : values) bytes += number(static_cast<uint64_t>(value), width);
  return bytes;
}

inline Entry bytes(uint16_t tag, const std::string& value, uint16_t type = typeUndefined) {
  return {tag, type, static_cast<uint32_t>(value.size()), value};
}
inline Entry text(uint16_t tag, const std::string& value) {
  return bytes(tag, value + '\0', typeAscii);
}
inline Entry shorts(uint16_t tag, std::initializer_list<int64_t> values) {
  return {tag, typeShort, static_cast<uint32_t>(values.size()), numbers(values, 2), 2};
}
inline Entry longs(uint16_t tag, std::initializer_list<int64_t> values) {
  return {tag, typeLong, static_cast<uint32_t>(values.size()), numbers(values, 4), 4};
}
// Numerators and denominators alternate.
inline Entry rationals(uint16_t tag, std::initializer_list<int64_t> values) {
  return {tag, typeRational, static_cast<uint32_t>(values.size() / 2), numbers(values, 4), 4};
}
// An entry with this number in its value field, whatever the type.
inline Entry field(uint16_t tag, uint16_t type, uint32_t count, uint32_t value) {
  return {tag, type, count, number(value, 4), 4};
}
inline Entry pointerTo(Directory target, uint16_t tag) {
  return {tag, typeLong, 1, number(0, 4), 4, false, target};
}
inline Entry exifPointer() {
  return pointerTo(Directory::exif, 0x8769);
}
inline Entry gpsPointer() {
  return pointerTo(Directory::gps, 0x8825);
}
inline Entry interoperabilityPointer() {
  return pointerTo(Directory::interoperability, 0xA005);
}

// Directories without entries are omitted. `image` begins at 8 and links to `thumbnail`.
struct Picture {
  std::vector<Entry> image = {}, exif = {}, interoperability = {}, gps = {}, thumbnail = {};

  std::array<const std::vector<Entry>*, 5> directories() const {
    return {&image, &exif, &interoperability, &gps, &thumbnail};
  }
  static constexpr uint32_t start = 8;
  static uint32_t entriesSize(const std::vector<Entry>& entries) {
    return static_cast<uint32_t>(2 + 12 * entries.size() + 4);
  }
  // The TIFF offset of a directory, which is followed by its out-of-line values.
  uint32_t offsetOf(Directory directory) const {
    uint32_t offset = start;
    for (size_t i = 0; i < static_cast<size_t>(directory); ++i) {
      if (directories()[i]->empty()) continue;
      offset += entriesSize(*directories()[i]);
      for (const Entry& entry : *directories()[i])
        if (entry.isOutOfLine) offset += static_cast<uint32_t>(entry.value.size());
    }
    return offset;
  }
};

// `shift` is added to every offset, for headers that are not at the origin of offsets.
inline std::string tiffBytes(const Picture& picture, Order order, uint32_t shift = 0) {
  const auto swapped = [&](const Entry& entry) {
    std::string value = entry.value;
    if (order == Order::mm)
      for (size_t i = 0; i + entry.unit <= value.size(); i += entry.unit)
        value.replace(i, entry.unit,
                      std::string(value.rbegin() + (value.size() - i - entry.unit),
                                  value.rbegin() + (value.size() - i)));
    return value;
  };
  std::string file = (order == Order::ii ? "II" : "MM") + number(42, 2, order) +
                     number(Picture::start + shift, 4, order);
  for (const auto* entries : picture.directories()) {
    if (entries->empty()) continue;
    std::string values;
    const auto valuesAt = static_cast<uint32_t>(file.size() + Picture::entriesSize(*entries));
    file += number(entries->size(), 2, order);
    for (const Entry& entry : *entries) {
      file += number(entry.tag, 2, order) + number(entry.type, 2, order) +
              number(entry.count, 4, order);
      if (entry.target) {
        file += number(picture.offsetOf(*entry.target) + shift, 4, order);
      } else if (entry.isOutOfLine) {
        file += number(valuesAt + values.size() + shift, 4, order);
        values += swapped(entry);
      } else {
        std::string value = swapped(entry);
        value.resize(4);
        file += value;
      }
    }
    const bool links = entries == &picture.image && !picture.thumbnail.empty();
    file += number(links ? picture.offsetOf(Directory::thumbnail) + shift : 0, 4, order) + values;
  }
  return file;
}

// A segment of a JPEG stream: marker, length and payload (ITU-T T.81, B.1.1.4).
inline std::string segment(uint16_t marker, const std::string& payload) {
  return number(marker, 2, Order::mm) + number(payload.size() + 2, 2, Order::mm) + payload;
}
inline const std::string jpegStart = "\xFF\xD8", jpegEnd = "\xFF\xD9";

// SOI, `before` (an APP0 segment, say), APP1 with the TIFF structure, EOI.
inline std::string jpegBytes(const std::string& tiff, const std::string& before = {}) {
  return jpegStart + before + segment(0xFFE1, std::string("Exif\0\0", 6) + tiff) + jpegEnd;
}

// The APP0 of ordinary JPEG files: its length field reads 16.
inline std::string jfifSegment() {
  return segment(0xFFE0, std::string("JFIF\0\1\1\0\0\1\0\1\0\0", 14));
}

// An ordinary picture with `thumbnail` as its JPEG thumbnail.
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

}  // namespace exifkeep::test

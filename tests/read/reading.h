// SPDX-License-Identifier: MIT
// Reads files, or pictures written into the test's own directory, into all four records.
#pragma once

#include <exifkeep/exifkeep.h>

#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "platform/scratch.h"
#include "read/read_metadata.h"
#include "tiff_builder.h"

namespace exifkeep::test {

// The entry that makes a directory an Exif directory.
inline Entry version() {
  return bytes(0x9000, "0220");
}

// The four records of a file and the memory that they point to.
struct Reading : ExifMetadata {
  explicit Reading(const std::string& path) : ExifMetadata() {
    succeeded = readExifMetadata(reader, path.c_str(), *this);
  }
  ExifReader reader;
  bool succeeded;
};

class ReadTest : public ScratchTest {
 protected:
  std::string fileOf(const std::string& content, const std::string& name = "x.jpg") const {
    writeFile(path(name), content);
    return path(name);
  }
  std::unique_ptr<Reading> read(const std::string& content) const {
    return std::make_unique<Reading>(fileOf(content));
  }
  std::unique_ptr<Reading> read(const Picture& picture, Order order = Order::ii) const {
    return read(tiffBytes(picture, order));
  }
  // A picture with these entries in its Exif directory.
  std::unique_ptr<Reading> readExif(std::vector<Entry> entries, Order order = Order::ii) const {
    entries.insert(entries.begin(), version());
    return read({.image = {exifPointer()}, .exif = std::move(entries)}, order);
  }
};

inline constexpr Order bothOrders[] = {Order::ii, Order::mm};

using Items = std::vector<std::pair<std::string, std::string>>;

inline Items itemsIn(const CPtrList& list) {
  Items items;
  for (const InfoItem& item : exifkeep::items(list)) items.emplace_back(item.label, item.value);
  return items;
}

// The items of a call; none if it returns 0.
inline Items itemsOf(const std::string& path) {
  CPtrList list;
  const int answer = GetExifInfo(path.c_str(), &list);
  Items items = itemsIn(list);
  EXPECT_EQ(answer == 0 && !items.empty(), false);
  EXPECT_EQ(FreeInfoList(&list), 1);
  return items;
}

}  // namespace exifkeep::test

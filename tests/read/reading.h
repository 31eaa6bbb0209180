// Reads files into all four records, and pictures by writing them into the test's own directory.
#pragma once

#include <cstring>
#include <memory>

#include "platform/scratch.h"
#include "read/read_metadata.h"
#include "tiff_builder.h"

namespace exifkeep::test {

// The version that makes a directory an Exif directory.
inline Entry version() {
  return bytes(0x9000, "0220");
}

// The four records of a file, with what their pointers lead to.
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

}  // namespace exifkeep::test

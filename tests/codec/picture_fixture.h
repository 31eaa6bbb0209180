// SPDX-License-Identifier: MIT
// Pictures and files for the codec's tests: images with a repeatable pattern, files as bytes, and
// loading as a caller of the codec does it.
#pragma once

#include <load_picture.h>
#include <praster.h>
#include <pxcodec32.h>

#include <optional>
#include <vector>

#include "platform/scratch.h"
#include "tiff_builder.h"

// A smooth pattern that differs in every channel and corner. Palette images get colours.
inline PRaster patterned(int bits, unsigned width, unsigned height, bool coloured = false) {
  PRaster image;
  EXPECT_EQ(image.CreateImage(PRaster::GetImageType(bits, 0), width, height), 1);
  if (coloured)
    for (unsigned i = 0; i < (1u << bits); ++i)
      image.palette()[i] = {BYTE(255 - i), BYTE(i / 2 + 3), BYTE(i), 0};
  for (unsigned y = 0; y < height; ++y)
    for (unsigned x = 0; x < width; ++x) {
      const unsigned across = 255 * x / width, down = 255 * y / height;
      const unsigned value = bits == 24  ? across | down << 8 | (255 - across) << 16
                             : bits == 8 ? (across + down) / 2
                                         : (x * x + y) % 3 == 0;
      image.SetPixel(int(x), int(y), value);
    }
  return image;
}

inline int save(const std::string& path, PRaster& image) {
  tagLmmInfo info;
  image.GetLmmInfo(info);
  return AllSaveDIBImg(path.c_str(), &info, image.GetLmmOffset(), nullptr);
}

// The image's old contents are freed even if the file cannot be read.
inline std::optional<PRaster> load(const std::string& path) {
  PRaster image = patterned(1, 1, 1);
  if (exifkeep::loadPicture(path.c_str(), image)) return image;
  EXPECT_TRUE(image.IsEmpty());
  return std::nullopt;
}

// The position of bytes in a file.
inline uint32_t numberAt(const std::string& bytes, size_t at, unsigned width, bool isBig = false) {
  uint32_t value = 0;
  for (unsigned i = 0; i < width; ++i)
    value |= uint32_t{uint8_t(bytes.at(at + i))} << 8 * (isBig ? width - 1 - i : i);
  return value;
}

// In KiB, as counted by the system.
inline long largestAddressSpace() {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word && word != "VmPeak:") continue;
  long size = 0;
  status >> size;
  return size;
}

// The largest difference of any channel between two images, both through their palettes.
inline int largestDifference(PRaster& a, PRaster& b) {
  if (a.width() != b.width() || a.height() != b.height()) return 256;
  a.ConvertTo24bit();
  b.ConvertTo24bit();
  int largest = 0;
  for (unsigned y = 0; y < a.height(); ++y)
    for (unsigned i = 0; i < a.width() * 3; ++i)
      largest = std::max(largest, std::abs(a.row(y)[i] - b.row(y)[i]));
  return largest;
}

namespace exifkeep::test {

// A JPEG file without pixels: SOI and an Exif segment (little-endian) with Make, ExifVersion 2.2
// and, if not empty, RelatedSoundFile of 13 bytes.
inline std::string exifJpeg(const std::string& make, std::string soundFile = "") {
  Picture picture = {.image = {text(0x010F, make), exifPointer()}, .exif = {bytes(0x9000, "0220")}};
  if (!soundFile.empty()) {
    soundFile.resize(13);
    picture.exif.push_back(bytes(0xA004, soundFile, typeAscii));
  }
  return jpegBytes(tiffBytes(picture, Order::ii));
}

// The pixels of a JPEG file after the Exif segment of another.
inline std::string withPixels(const std::string& exif, const std::string& pixels) {
  return exif.substr(0, exif.size() - jpegEnd.size()) + pixels.substr(jpegStart.size());
}

}  // namespace exifkeep::test

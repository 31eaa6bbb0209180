// SPDX-License-Identifier: MIT
#include <exifkeep/exifkeep.h>
#include <gtest/gtest.h>

#include <string>

#include "codec/picture_fixture.h"
#include "failure_switch.h"
#include "imageio/image_codec_bridge.h"
#include "tiff_builder.h"

namespace exifkeep::test {
namespace {

using Entries = std::vector<Entry>;

// The contents of the host's thumbnail object afterwards.
enum Outcome { untouched, emptied, filled };

// The thumbnail's bytes are here in the TIFF structure, at the end of the file.
constexpr uint32_t pixelsAt = 200;

// With no entries there is no IFD1.
std::string exifTiff(Order order, const Entries& thumbnail, const std::string& pixels) {
  std::string tiff = tiffBytes(
      {.image = {exifPointer()}, .exif = {bytes(0x9000, "0220")}, .thumbnail = thumbnail}, order);
  tiff.resize(pixelsAt);
  return tiff + pixels;
}

Entries strip(uint32_t width, uint32_t height, const Entries& rest) {
  Entries entries = {shorts(0x0100, {width}), longs(0x0101, {height}), longs(0x0111, {pixelsAt})};
  entries.insert(entries.end(), rest.begin(), rest.end());
  return entries;
}

Entries jpegEntries(uint32_t position, uint32_t length, uint16_t compression = 6) {
  return {longs(0x0201, {position}), longs(0x0202, {length}), shorts(0x0103, {compression})};
}

const Entry colour = shorts(0x0102, {8, 8, 8}), threeSamples = shorts(0x0115, {3});
const Entry oneBit = shorts(0x0102, {1}), eightBits = shorts(0x0102, {8});
Entry photometric(uint16_t value) {
  return shorts(0x0106, {value});
}

// The pixels from left to right, beginning with the top row.
std::vector<unsigned> pixelsOf(const PRaster& image) {
  std::vector<unsigned> pixels;
  for (unsigned y = 0; y < image.height(); ++y)
    for (unsigned x = 0; x < image.width(); ++x) pixels.push_back(image.GetPixel(int(x), int(y)));
  return pixels;
}

class OpenPicture : public ScratchTest {
 protected:
  std::string jpegStream(const std::string& name, unsigned width, unsigned height) {
    PRaster picture = patterned(24, width, height);
    save(path(name), picture);
    return readFile(path(name));
  }

  // Opens the file into images of 2 x 1 pixels.
  int open(const std::string& file, const std::string& name = "opened.jpg") {
    writeFile(path(name), file);
    image_ = patterned(8, 2, 1);
    thumbnail_ = patterned(8, 2, 1);
    return OpenExifFile(path(name).c_str(), &image_, &thumbnail_);
  }
  Outcome outcome() const {
    if (thumbnail_.IsEmpty()) return emptied;
    return pixelsOf(thumbnail_) == pixelsOf(patterned(8, 2, 1)) ? untouched : filled;
  }
  // In both byte orders. Without the thumbnail's bytes it is black.
  void expectThumbnail(const Entries& entries, const std::string& pixels, int type,
                       const std::vector<unsigned>& expected) {
    for (const Order order : {Order::ii, Order::mm}) {
      const std::string file = exifTiff(order, entries, pixels);
      ASSERT_EQ(open(file), 1);
      EXPECT_EQ(thumbnail_.GetImageType(), type);
      EXPECT_EQ(thumbnail_.width(), uint8_t(entries[0].value[0]));
      EXPECT_EQ(pixelsOf(thumbnail_), expected);
      EXPECT_TRUE(image_.IsEmpty());  // the file has no main image
      open(file.substr(0, file.size() - pixels.size()));
      EXPECT_EQ(pixelsOf(thumbnail_), std::vector<unsigned>(expected.size()));
    }
  }

  const std::string jpeg_ = jpegStream("small.jpg", 16, 8);
  const std::string png_ = jpegStream("small.png", 16, 8);  // by its name
  const uint32_t jpegLength_ = uint32_t(jpeg_.size());
  PRaster image_, thumbnail_;
};

TEST_F(OpenPicture, UncompressedThumbnails) {
  const int colours = PRaster::type24Bit, greys = PRaster::type8Bit, bits = PRaster::type1Bit;
  expectThumbnail(strip(2, 2, {colour, threeSamples}), "abcdefghijkl", colours,
                  {0x636261, 0x666564, 0x696867, 0x6C6B6A});
  expectThumbnail(strip(1, 1, {colour}), "abc", colours, {0x636261});
  // Grey levels do not depend on what black is, but bits do.
  expectThumbnail(strip(2, 1, {eightBits, photometric(0)}), "a\xFF", greys, {0x61, 0xFF});
  expectThumbnail(strip(4, 1, {oneBit, photometric(0)}), "\xA0", bits, {0, 255, 0, 255});
  expectThumbnail(strip(9, 2, {oneBit, photometric(1)}), "\x81\x80\x01\x7F", bits,  // padded rows
                  {255, 0, 0, 0, 0, 0, 0, 255, 255, 0, 0, 0, 0, 0, 0, 0, 255, 0});
  expectThumbnail(strip(4, 1, {shorts(0x0102, {16})}), "\x90", colours, {255, 0, 0, 255});
  // More than the reader reads at once.
  std::string pixels;
  std::vector<unsigned> expected;
  for (unsigned i = 0; i < 161 * 120; ++i) pixels += number(expected.emplace_back(i * 7), 3);
  expectThumbnail(strip(161, 120, {colour}), pixels, colours, expected);
}

TEST_F(OpenPicture, JpegPicturesWithJpegThumbnails) {
  const std::string stream = jpegStream("main.jpg", 40, 24);
  PRaster main = *load(path("main.jpg")), small = *load(path("small.jpg"));
  Entries entries = jpegEntries(pixelsAt, jpegLength_);
  for (const size_t entryCount : {3, 2}) {  // also without Compression
    entries.resize(entryCount, photometric(6));
    for (const Order order : {Order::ii, Order::mm}) {
      ASSERT_EQ(open(withPixels(jpegBytes(exifTiff(order, entries, jpeg_)), stream)), 1);
      EXPECT_EQ(largestDifference(thumbnail_, small), 0);
      EXPECT_EQ(thumbnail_.GetDpmX(), 0u);
      EXPECT_EQ(largestDifference(image_, main), 0);
    }
  }
  EXPECT_EQ(OpenExifFile(path("opened.jpg").c_str(), nullptr, nullptr), 1);
}

TEST_F(OpenPicture, ThumbnailsOfEveryOutcome) {
  const std::tuple<const char*, Entries, std::string, Outcome> cases[] = {
      {"no IFD1", {}, "", untouched},
      {"palette", strip(1, 1, {eightBits, photometric(3)}), jpeg_, untouched},
      {"mask", strip(1, 1, {oneBit, photometric(4)}), jpeg_, untouched},
      {"YCbCr", strip(1, 1, {colour, photometric(6)}), jpeg_, untouched},
      {"no pixels", strip(0, 0, {eightBits}), jpeg_, emptied},
      {"JPEG without position", jpegEntries(0, jpegLength_), jpeg_, untouched},
      {"JPEG beyond the end", jpegEntries(0xFFFFFFFF, jpegLength_), jpeg_, emptied},
      {"JPEG at the end", jpegEntries(pixelsAt, jpegLength_), "", emptied},
      {"cut in its first pixel", strip(2, 1, {colour, threeSamples}), "ab", filled},
      {"the most pixels", strip(2048, 2048, {eightBits}), "a", filled},
      {"one row more", strip(2048, 2049, {eightBits}), "a", emptied},
      {"called JPEG, but a PNG file", jpegEntries(pixelsAt, 0xFFFF), png_, emptied},
      {"JPEG that is not", jpegEntries(pixelsAt, 4), jpegStart + jpegEnd, emptied},
      {"JPEG longer than the file", jpegEntries(pixelsAt, 0xFFFFFFFF), jpeg_, filled},
      {"JPEG with another Compression", jpegEntries(pixelsAt, jpegLength_, 1), jpeg_, emptied},
  };
  for (const auto& [name, entries, thumbnail, expected] : cases) {
    EXPECT_EQ(open(exifTiff(Order::ii, entries, thumbnail)), 1) << name;
    EXPECT_EQ(outcome(), expected) << name;
  }
}

// Maximum values of fields, singly and in pairs: no memory is allocated for what the file does not
// have.
TEST_F(OpenPicture, HugeSizesAreNotAllocated) {
  const Entries plain = strip(9, 9, {colour, threeSamples});
  const std::string pixels(300, '\0');
  open(exifTiff(Order::ii, plain, pixels));  // needed for any file
  const long before = largestAddressSpace();
  ASSERT_GT(before, 0);
  for (const Entries& entries : {plain, strip(9, 9, {oneBit}), jpegEntries(pixelsAt, 300)})
    for (size_t i = 0; i < entries.size(); ++i)
      for (size_t j = i; j < entries.size(); ++j)
        for (const uint32_t huge : {0xFFFFFFFFu, 20000000u}) {
          Entries changed = entries;
          for (const size_t k : {i, j}) changed[k] = field(changed[k].tag, typeLong, huge, huge);
          EXPECT_EQ(open(exifTiff(Order::ii, changed, pixels)), 1);
        }
  EXPECT_LT(largestAddressSpace() - before, 64 * 1024);  // KiB
}

TEST_F(OpenPicture, OtherFilesLeaveTheImagesUnchanged) {
  const std::string tiff = exifTiff(Order::mm, jpegEntries(pixelsAt, jpegLength_), jpeg_);
  for (const auto& [file, name] : {std::pair(jpeg_, "opened.jpg"), {tiff, "opened.txt"}}) {
    EXPECT_EQ(open(file, name), 0);
    EXPECT_EQ(pixelsOf(image_), pixelsOf(thumbnail_));
    EXPECT_EQ(outcome(), untouched);
  }
}

using CodecBridge = ScratchTest;

TEST_F(CodecBridge, KnowsFormatsOnceLoaded) {
  ImageCodecBridge bridge;
  EXPECT_FALSE(bridge.canWrite("jpg"));
  EXPECT_TRUE(bridge.loadCapabilities());
  for (const char* name : {"JPG", "Tiff", "png"}) EXPECT_TRUE(bridge.canWrite(name)) << name;
  for (const char* name : {"jp", "jpgx", ""}) EXPECT_EQ(bridge.findFormat(name), -1) << name;
  EXPECT_EQ(liveBlocks(), 0);
}

TEST_F(CodecBridge, LoadsPicturesWithPaletteAndResolutionOrNotAtAll) {
  PRaster picture = patterned(8, 30, 20, true);
  picture.setResolution(2835, 3937);
  ASSERT_EQ(save(path("a.png"), picture), 1);
  const auto image = ImageCodecBridge().loadImageFile(path("a.png").c_str());
  ASSERT_TRUE(image);
  EXPECT_EQ(largestDifference(*image, picture), 0);
  EXPECT_EQ(std::tuple(image->GetDpmX(), image->GetDpmY()), std::tuple(2835u, 3937u));
  const std::string whole = readFile(path("a.png"));
  writeFile(path("a.png"), whole.substr(0, whole.size() - 20));  // with header and palette
  EXPECT_FALSE(ImageCodecBridge().loadImageFile(path("a.png").c_str()));
  EXPECT_EQ(livePalettes(), 0);
}

}  // namespace
}  // namespace exifkeep::test

// Opening pictures through the exported function, over the real codec: uncompressed and JPEG
// thumbnails of both byte orders, what a failure leaves behind, damaged and hostile files.
#include <exifkeep/exifkeep.h>
#include <failure_switch.h>
#include <gtest/gtest.h>

#include <string>

#include "codec/picture_fixture.h"
#include "tiff_builder.h"

namespace exifkeep::test {
namespace {

using Entries = std::vector<Entry>;

// What the host's thumbnail object holds afterwards.
enum Outcome { untouched, emptied, filled };

// The thumbnail's bytes lie here in the TIFF structure, last in the file.
constexpr uint32_t pixelsAt = 200;

// With no entries there is no IFD1.
std::string exifTiff(Order order, const Entries& thumbnail, const std::string& pixels) {
  const Picture picture = {
      .image = {exifPointer()}, .exif = {bytes(0x9000, "0220")}, .thumbnail = thumbnail};
  std::string tiff = tiffBytes(picture, order);
  tiff.resize(pixelsAt);
  return tiff + pixels;
}

// A JPEG stream with an Exif segment behind its SOI.
std::string exifJpeg(const std::string& tiff, const std::string& stream) {
  return jpegStart + segment(0xFFE1, std::string("Exif\0\0", 6) + tiff) + stream.substr(2);
}

Entries stripEntries(uint32_t width, uint32_t height, const Entries& rest) {
  Entries entries = {shorts(0x0100, {width}), longs(0x0101, {height}), longs(0x0111, {pixelsAt})};
  entries.insert(entries.end(), rest.begin(), rest.end());
  return entries;
}

Entries jpegEntries(uint32_t position, uint32_t length) {
  return {longs(0x0201, {position}), longs(0x0202, {length}), shorts(0x0103, {6})};
}

const Entry colourBits = shorts(0x0102, {8, 8, 8}), threeSamples = shorts(0x0115, {3});
const Entry oneBit = shorts(0x0102, {1}), eightBits = shorts(0x0102, {8});
Entry photometric(uint16_t value) {
  return shorts(0x0106, {value});
}

// The pixels from left to right, top row first.
std::vector<unsigned> pixelsOf(const PRaster& image) {
  std::vector<unsigned> pixels;
  for (unsigned y = 0; y < image.height(); ++y)
    for (unsigned x = 0; x < image.width(); ++x) pixels.push_back(image.GetPixel(int(x), int(y)));
  return pixels;
}

class OpenPicture : public CodecTest {
 protected:
  OpenPicture() : jpeg_(jpegStream("small.jpg", 16, 8)) {}
  ~OpenPicture() override {
    char directory[256];
    EXPECT_GT(GetTempPathA(sizeof directory, directory), 0u);
    EXPECT_TRUE(std::filesystem::is_empty(directory));
  }

  std::string jpegStream(const std::string& name, unsigned width, unsigned height) {
    PRaster picture = patterned(24, width, height);
    save(path(name), picture);
    const Bytes stream = bytesOf(path(name));
    return {stream.begin(), stream.end()};
  }

  // Writes the file; image and thumbnail hold 2 x 1 pixels.
  void prepare(const std::string& file) {
    writeBytes(path("opened.jpg"), Bytes(file.begin(), file.end()));
    image_ = patterned(8, 2, 1);
    thumbnail_ = patterned(8, 2, 1);
  }
  int openPrepared() { return OpenExifFile(path("opened.jpg").c_str(), &image_, &thumbnail_); }
  int open(const std::string& file) {
    prepare(file);
    return openPrepared();
  }
  Outcome outcome() const {
    if (thumbnail_.IsEmpty()) return emptied;
    return pixelsOf(thumbnail_) == pixelsOf(patterned(8, 2, 1)) ? untouched : filled;
  }

  const std::string jpeg_;  // a stream of 16 x 8 pixels
  PRaster image_, thumbnail_;
};

TEST_F(OpenPicture, UncompressedThumbnails) {
  const struct {
    const char* name;
    uint32_t width, height;
    Entries entries;
    std::string pixels;
    int type;
    std::vector<unsigned> expected;
  } cases[] = {
      {"24 bits",
       2,
       2,
       {colourBits, threeSamples},
       numbers({255, 0, 0, 0, 255, 0, 0, 0, 255, 1, 2, 3}, 1),
       PRaster::type24Bit,
       {0x0000FF, 0x00FF00, 0xFF0000, 0x030201}},
      {"24 bits by the list alone",
       1,
       1,
       {colourBits},
       numbers({1, 2, 3}, 1),
       PRaster::type24Bit,
       {0x030201}},
      {"8 bits, white is zero",
       3,
       1,
       {eightBits, photometric(0)},
       numbers({0, 128, 255}, 1),
       PRaster::type8Bit,
       {0, 128, 255}},
      {"1 bit, rows padded",
       13,
       2,
       {oneBit, photometric(1)},
       numbers({0x80, 0x0F, 0x00, 0x10}, 1),
       PRaster::type1Bit,
       {255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 0}},
      {"1 bit, white is zero",
       4,
       1,
       {oneBit, photometric(0)},
       "\xA0",
       PRaster::type1Bit,
       {0, 255, 0, 255}},
      {"16 bits", 4, 1, {shorts(0x0102, {16})}, "\x90", PRaster::type24Bit, {255, 0, 0, 255}},
  };
  for (const auto& c : cases)
    for (const Order order : {Order::ii, Order::mm}) {
      SCOPED_TRACE(std::string(c.name) + (order == Order::ii ? ", II" : ", MM"));
      const std::string file =
          exifTiff(order, stripEntries(c.width, c.height, c.entries), c.pixels);
      ASSERT_EQ(open(file), 1);
      EXPECT_EQ(thumbnail_.GetImageType(), c.type);
      EXPECT_EQ(thumbnail_.width(), c.width);
      EXPECT_EQ(pixelsOf(thumbnail_), c.expected);
      EXPECT_TRUE(image_.IsEmpty());  // the file has no main image
      open(file.substr(0, file.size() - 1));
      EXPECT_EQ(outcome(), untouched);
    }
}

// More than the reader takes from the file at once.
TEST_F(OpenPicture, LargeUncompressedThumbnail) {
  std::string pixels(3 * 161 * 120, '\0');
  for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<char>(i * 7 + i / 251);
  open(exifTiff(Order::ii, stripEntries(161, 120, {colourBits}), pixels));
  std::string shown;
  for (const unsigned value : pixelsOf(thumbnail_)) shown += number(value, 3);
  EXPECT_TRUE(shown == pixels);
}

TEST_F(OpenPicture, JpegPicturesWithJpegThumbnails) {
  const std::string stream = jpegStream("main.jpg", 40, 24);
  PRaster main = *load(path("main.jpg")), small = *load(path("small.jpg"));
  Entries entries = jpegEntries(pixelsAt, static_cast<uint32_t>(jpeg_.size()));
  for (const size_t entryCount : {3, 2}) {  // without Compression too
    entries.resize(entryCount, photometric(6));
    for (const Order order : {Order::ii, Order::mm}) {
      ASSERT_EQ(open(exifJpeg(exifTiff(order, entries, jpeg_), stream)), 1);
      EXPECT_EQ(largestDifference(thumbnail_, small), 0);
      EXPECT_EQ(thumbnail_.GetDpmX(), 0u);
      EXPECT_EQ(largestDifference(image_, main), 0);
    }
  }
}

TEST_F(OpenPicture, ThumbnailsOfEveryOutcome) {
  const auto jpegLength = static_cast<uint32_t>(jpeg_.size());
  Entries mask = jpegEntries(pixelsAt, jpegLength), uncompressed = mask;
  mask.push_back(photometric(4));
  uncompressed[2] = shorts(0x0103, {1});
  const std::string pixels(20, '\x55');
  const struct {
    const char* name;
    Entries entries;
    std::string bytes;
    Outcome expected;
  } cases[] = {
      {"no IFD1", {}, "", untouched},
      {"palette", stripEntries(1, 1, {eightBits, photometric(3)}), pixels, untouched},
      {"mask", stripEntries(1, 1, {oneBit, photometric(4)}), pixels, untouched},
      {"mask as JPEG", mask, jpeg_, untouched},
      {"YCbCr", stripEntries(1, 1, {colourBits, photometric(6)}), pixels, untouched},
      {"no pixels", stripEntries(0, 0, {eightBits}), pixels, emptied},
      {"JPEG without position", jpegEntries(0, jpegLength), jpeg_, untouched},
      {"JPEG without length", jpegEntries(pixelsAt, 0), jpeg_, untouched},
      {"JPEG behind the end", jpegEntries(0xFFFFFFFF, jpegLength), jpeg_, untouched},
      {"JPEG that is none", jpegEntries(pixelsAt, 4), jpegStart + jpegEnd, emptied},
      {"JPEG longer than the file", jpegEntries(pixelsAt, 0xFFFFFFFF), jpeg_, filled},
      {"JPEG with another Compression", uncompressed, jpeg_, emptied},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(open(exifTiff(Order::ii, c.entries, c.bytes)), 1) << c.name;
    EXPECT_EQ(outcome(), c.expected) << c.name;
  }
}

TEST_F(OpenPicture, ObjectsMayBeMissingAndOtherFilesTouchNothing) {
  open(exifTiff(Order::ii, jpegEntries(pixelsAt, 999), jpeg_));
  EXPECT_EQ(OpenExifFile(path("opened.jpg").c_str(), nullptr, nullptr), 1);
  std::filesystem::copy(path("opened.jpg"), path("opened.txt"));
  EXPECT_EQ(open(jpeg_), 0);  // no Exif segment
  EXPECT_EQ(OpenExifFile(path("opened.txt").c_str(), &image_, &thumbnail_), 0);
  EXPECT_EQ(pixelsOf(image_), pixelsOf(thumbnail_));
  EXPECT_EQ(outcome(), untouched);
}

// Fields of the directory at their largest, singly and in pairs: no memory for what the file does
// not hold.
TEST_F(OpenPicture, HostileSizesCostNothing) {
  const auto largestAddressSpace = [] {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word && word != "VmPeak:") continue;
    long size = 0;
    status >> size;
    return size;
  };
  const Entries colour = stripEntries(9, 9, {colourBits, threeSamples});
  open(exifTiff(Order::ii, colour, std::string(300, '\0')));  // what any opening needs
  const long before = largestAddressSpace();
  ASSERT_GT(before, 0);
  for (const Entries& entries : {colour, stripEntries(9, 9, {oneBit}), jpegEntries(pixelsAt, 300)})
    for (size_t i = 0; i < entries.size(); ++i)
      for (size_t j = i; j < entries.size(); ++j)
        for (const uint32_t huge : {0xFFFFFFFFu, 20000000u}) {
          Entries changed = entries;
          for (const size_t k : {i, j}) changed[k] = field(changed[k].tag, typeLong, huge, huge);
          EXPECT_EQ(open(exifTiff(Order::ii, changed, std::string(300, '\0'))), 1);
        }
  EXPECT_LT(largestAddressSpace() - before, 64 * 1024);  // KiB
}

TEST_F(OpenPicture, EveryPrefixSurvives) {
  const std::string tiff = exifTiff(Order::mm, jpegEntries(pixelsAt, 999), jpeg_);
  const std::string strip = exifTiff(Order::ii, stripEntries(2, 2, {colourBits}), "abcdefghijkl");
  for (const std::string& whole : {exifJpeg(tiff, jpeg_), strip})
    for (size_t size = 0; size <= whole.size(); ++size) {
      const int result = open(whole.substr(0, size));
      EXPECT_TRUE(result == 1 || (outcome() == untouched && size < whole.size())) << size;
    }
}

// Whatever fails, the thumbnail is what it was, empty or the file's, and nothing stays behind.
TEST_F(OpenPicture, EveryPlatformCallMayFail) {
  const std::string file = exifJpeg(exifTiff(Order::ii, jpegEntries(pixelsAt, 999), jpeg_), jpeg_);
  const int handles = openHandles(), blocks = liveBlocks(), palettes = livePalettes();
  for (int kind = 0; kind < int(PlatformCall::kinds); ++kind)
    for (int n = 1, made = 1; n <= made; ++n) {
      SCOPED_TRACE(testing::Message() << "call " << kind << ", number " << n);
      const auto call = PlatformCall(kind);
      prepare(file);
      clearFailures();
      failCall(call, n);
      const int result = openPrepared();
      made = callsMade(call);
      clearFailures();
      EXPECT_TRUE(result == 1 || outcome() == untouched);
      EXPECT_TRUE(outcome() != filled || thumbnail_.width() == 16);
      // These come before the thumbnail's old image is given up.
      const bool isEarly = call == PlatformCall::lock || call == PlatformCall::write;
      EXPECT_TRUE(outcome() != emptied || !isEarly);
      EXPECT_EQ(openHandles(), handles);
      EXPECT_EQ(liveBlocks(), blocks);
      EXPECT_EQ(livePalettes(), palettes);
    }
}

}  // namespace
}  // namespace exifkeep::test

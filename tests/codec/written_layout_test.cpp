// What the codec writes, byte by byte: the segments of JPEG files and the directory of TIFF files,
// for every depth and from one pixel up. Exif saving relies on both.
#include "failure_switch.h"
#include "picture_fixture.h"

namespace {

// Calls `check` with an image of every depth, with and without a palette, in every size.
void forEachShape(const auto& check) {
  for (const auto& [width, height] : {std::pair{1u, 1u}, {7u, 5u}, {160u, 120u}, {640u, 480u}})
    for (const auto& [bits, coloured] : {std::pair{1, false}, {8, false}, {8, true}, {24, false}}) {
      SCOPED_TRACE(bits * 10000 + int(width));
      PRaster image = patterned(bits, width, height, coloured);
      image.setResolution(5906, 2835);
      check(image);
    }
}

struct Segment {
  int marker, length;  // length with the marker
  bool operator==(const Segment&) const = default;
};

// The segments up to and with SOS.
std::vector<Segment> segmentsOf(const Bytes& jpeg, std::size_t& position) {
  std::vector<Segment> segments;
  position = 2;
  while (position + 4 <= jpeg.size() && jpeg[position] == 0xFF) {
    const int marker = jpeg[position + 1];
    const int length = 2 + jpeg[position + 2] * 256 + jpeg[position + 3];
    segments.push_back({marker, length});
    position += std::size_t(length);
    if (marker == 0xDA) break;
  }
  return segments;
}

using WrittenLayout = CodecTest;

TEST_F(WrittenLayout, JpegSegments) {
  const std::vector<Segment> expected = {{0xE0, 18}, {0xDB, 69},  {0xDB, 69},
                                         {0xC0, 19}, {0xC4, 33},  {0xC4, 183},
                                         {0xC4, 33}, {0xC4, 183}, {0xDA, 14}};
  forEachShape([&](PRaster& image) {
    ASSERT_EQ(save(path("a.jpg"), image), 1);
    const Bytes jpeg = bytesOf(path("a.jpg"));
    ASSERT_GT(jpeg.size(), 623u);
    EXPECT_EQ(jpeg[0] * 256 + jpeg[1], 0xFFD8);
    std::size_t scan = 0;
    EXPECT_EQ(segmentsOf(jpeg, scan), expected);
    const auto octet = [](unsigned value) { return static_cast<unsigned char>(value); };
    const Bytes frame = {octet(image.height() >> 8),
                         octet(image.height()),
                         octet(image.width() >> 8),
                         octet(image.width()),
                         3,
                         1,
                         0x21,
                         0,
                         2,
                         0x11,
                         1,
                         3,
                         0x11,
                         1};  // components: 2x1, 1x1, 1x1
    EXPECT_EQ(Bytes(&jpeg[163], &jpeg[177]), frame);
    // 5906 and 2835 dots per metre are 150 and 72 dots per inch.
    EXPECT_EQ(Bytes(&jpeg[6], &jpeg[18]), (Bytes{'J', 'F', 'I', 'F', 0, 1, 1, 1, 0, 150, 0, 72}));
    // No marker in the entropy-coded data (so no restart), and EOI ends the file.
    for (std::size_t i = scan; i + 2 < jpeg.size(); ++i)
      if (jpeg[i] == 0xFF) {
        ASSERT_EQ(jpeg[i + 1], 0) << i;
      }
    EXPECT_EQ(jpeg[jpeg.size() - 2] * 256 + jpeg.back(), 0xFFD9);
  });
}

unsigned number(const Bytes& bytes, std::size_t at, int size) {
  unsigned value = 0;
  while (size-- > 0) value = value << 8 | bytes.at(at + unsigned(size));
  return value;
}

TEST_F(WrittenLayout, TiffDirectoryAndStrip) {
  const unsigned tags[] = {256, 257, 258, 259, 262, 273, 277, 278, 279, 282, 283, 284, 296};
  forEachShape([&](PRaster& image) {
    ASSERT_EQ(save(path("a.tif"), image), 1);
    const Bytes tiff = bytesOf(path("a.tif"));
    const unsigned width = image.width(), height = image.height(), pixels = width * height * 3;
    ASSERT_EQ(Bytes(&tiff[0], &tiff[10]), (Bytes{'I', 'I', 42, 0, 8, 0, 0, 0, 13, 0}));
    unsigned values[13], entry = 0;
    for (unsigned tag : tags) {
      const unsigned at = 10 + 12 * entry;
      EXPECT_EQ(number(tiff, at, 2), tag);
      values[entry++] = number(tiff, at + 8, 4);
    }
    EXPECT_EQ(number(tiff, 10 + 12 * 13, 4), 0u);  // no next directory
    EXPECT_EQ(values[0], width);
    EXPECT_EQ(values[1], height);
    EXPECT_EQ(Bytes(&tiff[values[2]], &tiff[values[2] + 6]), (Bytes{8, 0, 8, 0, 8, 0}));
    EXPECT_EQ(values[3], 1u);
    EXPECT_EQ(values[4], 2u);
    EXPECT_EQ(values[5] + pixels, tiff.size());
    EXPECT_EQ(values[6], 3u);
    EXPECT_EQ(values[7], height);
    EXPECT_EQ(values[8], pixels);
    EXPECT_EQ(number(tiff, values[9], 4) / number(tiff, values[9] + 4, 4), 150u);
    EXPECT_EQ(number(tiff, values[10], 4) / number(tiff, values[10] + 4, 4), 72u);
    EXPECT_EQ(values[11], 1u);
    EXPECT_EQ(values[12], 2u);
    image.ConvertTo24bit();
    EXPECT_EQ(number(tiff, values[5], 3), image.GetPixel(0, 0));
    EXPECT_EQ(number(tiff, tiff.size() - 3, 3), image.GetPixel(int(width) - 1, int(height) - 1));
  });
}

// Every open, write and close of a save fails in turn: result 0, and no file is left.
TEST_F(WrittenLayout, FailedSavesLeaveNoFile) {
  using exifkeep::PlatformCall;
  PRaster image = patterned(24, 300, 200);
  for (const char* name : {"a.jpg", "a.tif", "a.png"})
    for (PlatformCall kind :
         {PlatformCall::codec, PlatformCall::open, PlatformCall::write, PlatformCall::close}) {
      exifkeep::clearFailures();
      ASSERT_EQ(save(path(name), image), 1);
      const int calls = exifkeep::callsMade(kind);
      EXPECT_GT(calls, 0);
      for (int n = 1; n <= calls; ++n) {
        std::filesystem::remove(path(name));
        exifkeep::clearFailures();
        exifkeep::failCall(kind, n);
        EXPECT_EQ(save(path(name), image), 0) << name << " kind " << int(kind) << " call " << n;
        EXPECT_FALSE(std::filesystem::exists(path(name)));
      }
    }
  exifkeep::clearFailures();
}

TEST_F(WrittenLayout, RefusesWhatItCannotWrite) {
  PRaster image = patterned(24, 2, 2), wide = patterned(1, 70000, 1), empty;
  std::filesystem::create_directory(path("d.jpg"));
  EXPECT_EQ(save(path("a.gif"), image), 0);
  EXPECT_EQ(save(path("a"), image), 0);
  EXPECT_EQ(save(path("d.jpg"), image), 0);
  EXPECT_EQ(save(path("none/a.jpg"), image), 0);
  EXPECT_EQ(save(path("a.jpg"), empty), 0);
  EXPECT_EQ(save(path("w.jpg"), wide), 0);  // JPEG ends at 65500 pixels
  EXPECT_FALSE(std::filesystem::exists(path("w.jpg")));
  EXPECT_EQ(save(path("w.tif"), wide), 1);
  EXPECT_EQ(save(path("A.JpG"), image), 1);
}

}  // namespace

// The raster image: pixel access at and beyond the edges, sizes, scaling against a plain
// floating-point average, palettes, and handing images over.
#include <gtest/gtest.h>
#include <praster.h>

#include <algorithm>
#include <cmath>
#include <tuple>

#include "failure_switch.h"

namespace {

constexpr int allTypes[] = {PRaster::type1Bit, PRaster::type8Bit, PRaster::type24Bit};

PRaster makeImage(int type, unsigned width, unsigned height) {
  PRaster image;
  EXPECT_EQ(image.CreateImage(type, width, height), 1);
  return image;
}

// Levels that look random and repeat every run.
void fillNoise(PRaster& image) {
  unsigned seed = 7;
  for (unsigned y = 0; y < image.height(); ++y)
    for (unsigned x = 0; x < image.width(); ++x) {
      seed = seed * 1664525 + 1013904223;
      image.SetPixel(static_cast<int>(x), static_cast<int>(y), seed >> 8);
    }
}

TEST(Raster, PixelsAreSetInsideAndNowhereElse) {
  const unsigned values[] = {255, 0xA7, 0x00C0B0A0};
  for (int i = 0; i < 3; ++i) {
    PRaster image = makeImage(allTypes[i], 13, 5);
    const std::tuple<int, int> outside[] = {{-1, 0}, {0, -1},      {13, 0},      {0, 5},
                                            {15, 4}, {1 << 30, 2}, {2, 1 << 30}, {-1 << 30, -1}};
    for (const auto& [x, y] : outside) {
      image.SetPixel(x, y, values[i]);
      EXPECT_EQ(image.GetPixel(x, y), 0u);
    }
    for (int y = 0; y < 5; ++y)
      for (int x = 0; x < 13; ++x) {
        ASSERT_EQ(image.GetPixel(x, y, nullptr), 0u) << x << ',' << y;
        image.SetPixel(x, y, values[i]);
        ASSERT_EQ(image.GetPixel(x, y), values[i]);
        image.SetPixel(x, y, 0);
      }
    image.Clear(values[i]);
    EXPECT_EQ(image.GetPixel(0, 0), values[i]);
    EXPECT_EQ(image.GetPixel(12, 4), values[i]);
  }
}

TEST(Raster, RowsAreTopFirstInABottomUpBitmap) {
  PRaster image = makeImage(PRaster::type24Bit, 3, 2);
  image.SetPixel(1, 0, 0x00030201);  // blue 3, green 2, red 1
  const BYTE* top = image.row(0);
  EXPECT_EQ(std::make_tuple(top[3], top[4], top[5]), std::make_tuple(3, 2, 1));
  tagLmmInfo info;
  image.GetLmmInfo(info);
  EXPECT_EQ(info.stride, 12u);
  EXPECT_EQ(info.bits + info.stride, top);
  EXPECT_EQ(info.header, image.GetBIH());
  EXPECT_EQ(image.row(2), nullptr);
}

TEST(Raster, RefusesSizesAndTypes) {
  const std::tuple<int, unsigned, unsigned> refused[] = {
      {PRaster::type24Bit, 0, 5},
      {PRaster::type24Bit, 5, 0},
      {PRaster::type24Bit, 0xFFFFFFFF, 0xFFFFFFFF},
      {PRaster::type8Bit, 0x80000000, 2},
      {PRaster::type24Bit, (1 << 14) + 1, 1 << 14},
      {2, 5, 5},
      {-1, 5, 5}};
  for (const auto& [type, width, height] : refused) {
    PRaster image = makeImage(PRaster::type8Bit, 1, 1);
    EXPECT_EQ(image.CreateImage(type, width, height), 0) << width << 'x' << height;
    EXPECT_EQ(image.IsEmpty(), 1);
  }
  PRaster image;
  exifkeep::failCall(exifkeep::PlatformCall::allocate, 1);
  EXPECT_EQ(image.CreateImage(PRaster::type1Bit, 1, 1), 0);
  exifkeep::clearFailures();
  const std::pair<int, int> types[] = {{24, 1}, {8, 5}, {1, 0}, {16, -1}};
  for (const auto& [bits, type] : types) EXPECT_EQ(PRaster::GetImageType(bits, 0), type);
}

TEST(Raster, EmptyObjectsAreHarmless) {
  PRaster empty, image = makeImage(PRaster::type8Bit, 2, 2);
  empty.Clear(1);
  empty.SetPixel(0, 0, 1);
  EXPECT_EQ(empty.GetImageType(), -1);
  EXPECT_EQ(empty.row(0), nullptr);
  EXPECT_EQ(empty.GetPixel(0, 0) + empty.width() + empty.GetDpmX(), 0u);
  EXPECT_EQ(empty.ConvertTo24bit() + empty.CopyImage(image) + image.RescaleImage(empty), 0);
}

TEST(Raster, DetachAndAttachMoveTheImageItself) {
  PRaster from, to = makeImage(PRaster::type1Bit, 9, 9);
  from.CreateImage(PRaster::type8Bit, 4, 3, 0, 0, 2835, 3937, 15, 0, 0);
  from.SetPixel(1, 2, 99);
  const BYTE* row = from.row(2);
  to.Attach(from.Detach());
  EXPECT_EQ(from.IsEmpty(), 1);
  EXPECT_EQ(to.row(2), row);
  EXPECT_EQ(to.GetPixel(1, 2), 99u);
  EXPECT_EQ(to.GetDpmX(), 2835u);
  EXPECT_EQ(to.GetDpmY(), 3937u);
}

double covered(double begin, double end, unsigned index) {
  return std::max(0.0, std::min<double>(end, index + 1) - std::max<double>(begin, index));
}

// Weight of source pixel `index` in target pixel `at`.
double weightOf(unsigned index, unsigned source, unsigned at, unsigned target) {
  const double ratio = double(source) / target;
  if (target <= source) return covered(at * ratio, (at + 1) * ratio, index) / ratio;
  const double centre = std::clamp((at + 0.5) * ratio - 0.5, 0.0, source - 1.0);
  return std::max(0.0, 1 - std::fabs(centre - index));
}

double expectedLevel(const PRaster& source, const PRaster& target, unsigned x, unsigned y, int c) {
  double level = 0;
  for (unsigned j = 0; j < source.height(); ++j)
    for (unsigned i = 0; i < source.width(); ++i)
      level += weightOf(i, source.width(), x, target.width()) *
               weightOf(j, source.height(), y, target.height()) *
               (source.GetPixel(int(i), int(j)) >> (8 * c) & 0xFF);
  return level;
}

TEST(Raster, RescalesToTheWeightedAverage) {
  const unsigned sizes[][4] = {{37, 29, 11, 7},  {64, 600, 5, 2}, {5, 4, 13, 9}, {31, 3, 7, 8},
                               {3, 31, 8, 7},    {1, 1, 6, 5},    {7, 1, 3, 4},  {16, 12, 16, 12},
                               {40, 30, 39, 29}, {9, 9, 1, 1}};
  for (int type : {PRaster::type8Bit, PRaster::type24Bit})
    for (const auto& [sourceWidth, sourceHeight, width, height] : sizes) {
      PRaster source = makeImage(type, sourceWidth, sourceHeight);
      PRaster target = makeImage(type, width, height);
      source.Clear(0x00FFFE01);
      ASSERT_EQ(target.RescaleImage(source, nullptr, 0, 100), 1);
      for (unsigned i = 0; i < width * height; ++i)  // uniform colour stays to the last bit
        ASSERT_EQ(target.GetPixel(int(i % width), int(i / width)), source.GetPixel(0, 0));
      fillNoise(source);
      ASSERT_EQ(target.RescaleImage(source), 1);
      for (unsigned y = 0; y < height; ++y)
        for (unsigned x = 0; x < width; ++x)
          for (int c = 0; c < (type == PRaster::type24Bit ? 3 : 1); ++c)
            ASSERT_NEAR(target.GetPixel(int(x), int(y)) >> (8 * c) & 0xFF,
                        expectedLevel(source, target, x, y, c), 0.6)
                << sourceWidth << 'x' << sourceHeight << " to " << width << 'x' << height;
    }
}

TEST(Raster, PaletteAndBilevelImagesScaleToTheNearestPixel) {
  PRaster palette = makeImage(PRaster::type8Bit, 4, 2);
  palette.palette()[200] = {1, 2, 3, 0};
  PRaster bits = makeImage(PRaster::type1Bit, 4, 2);
  for (int x : {2, 3}) {
    palette.SetPixel(x, 1, 200);
    bits.SetPixel(x, 1, 255);
  }
  PRaster larger = makeImage(PRaster::type8Bit, 8, 6), smaller = makeImage(PRaster::type1Bit, 2, 3);
  ASSERT_EQ(larger.RescaleImage(palette), 1);
  ASSERT_EQ(smaller.RescaleImage(bits), 1);
  for (int y = 0; y < 6; ++y)
    for (int x = 0; x < 8; ++x)
      ASSERT_EQ(larger.GetPixel(x, y), y >= 3 && x >= 4 ? 200u : 0u) << x << ',' << y;
  EXPECT_EQ(larger.palette()[200].rgbRed, 3);
  const unsigned expected[3][2] = {{0, 0}, {0, 255}, {0, 255}};
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 2; ++x) EXPECT_EQ(smaller.GetPixel(x, y), expected[y][x]);
  EXPECT_EQ(smaller.RescaleImage(palette), 0);
}

TEST(Raster, ConvertsThroughThePalette) {
  LOGPALETTE colours = {0x300, 1, {{10, 20, 30, 0}}};
  PRaster image = makeImage(PRaster::type8Bit, 2, 1);
  EXPECT_TRUE(image.hasGreyPalette());
  const int palettes = exifkeep::livePalettes();
  EXPECT_EQ(image.SetPalette(CreatePalette(&colours), 1), 1);
  EXPECT_EQ(exifkeep::livePalettes(), palettes);
  EXPECT_FALSE(image.hasGreyPalette());
  image.SetPixel(1, 0, 77);
  PRaster copy = makeImage(PRaster::type8Bit, 2, 1);
  copy.setResolution(100, 200);
  ASSERT_EQ(copy.CopyImage(image), 1);
  ASSERT_EQ(copy.ConvertTo24bit(nullptr, 0, 100), 1);
  EXPECT_EQ(copy.GetImageType(), PRaster::type24Bit);
  EXPECT_EQ(copy.GetPixel(0, 0), 0x001E140Au);
  EXPECT_EQ(copy.GetPixel(1, 0), 0x004D4D4Du);
  EXPECT_EQ(copy.GetDpmX() + copy.GetDpmY(), 300u);
  EXPECT_EQ(copy.CopyImage(image), 0);
  PRaster bits = makeImage(PRaster::type1Bit, 9, 1);
  bits.SetPixel(8, 0, 255);
  ASSERT_EQ(bits.ConvertTo24bit(), 1);
  EXPECT_EQ(bits.GetPixel(7, 0), 0u);
  EXPECT_EQ(bits.GetPixel(8, 0), 0x00FFFFFFu);
}

}  // namespace

// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <praster.h>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

constexpr int allTypes[] = {PRaster::type1Bit, PRaster::type8Bit, PRaster::type24Bit};

PRaster makeImage(int type, unsigned width, unsigned height) {
  PRaster image;
  EXPECT_EQ(image.CreateImage(type, width, height), 1);
  return image;
}

// Pseudo-random levels, the same in every run.
void fillNoise(PRaster& image) {
  unsigned seed = 7;
  for (unsigned y = 0; y < image.height(); ++y)
    for (unsigned x = 0; x < image.width(); ++x) {
      seed = seed * 1664525 + 1013904223;
      image.SetPixel(static_cast<int>(x), static_cast<int>(y), seed >> 8);
    }
}

TEST(Raster, SetsPixelsOnlyInsideTheImage) {
  const unsigned values[] = {255, 0xA7, 0x00C0B0A0};
  for (int i = 0; i < 3; ++i) {
    PRaster image = makeImage(allTypes[i], 13, 5);
    for (const auto& [x, y] : {std::pair{-1, 0}, {0, -1}, {13, 0}, {0, 5}, {15, 4}, {1 << 30, 2}}) {
      image.SetPixel(x, y, values[i]);
      EXPECT_EQ(image.GetPixel(x, y), 0u);
    }
    for (int at = 0; at < 13 * 5; ++at) {
      ASSERT_EQ(image.GetPixel(at % 13, at / 13, nullptr), 0u) << at;
      image.SetPixel(at % 13, at / 13, values[i]);
      ASSERT_EQ(image.GetPixel(at % 13, at / 13), values[i]);
      image.SetPixel(at % 13, at / 13, 0);
    }
    image.Clear(values[i]);
    EXPECT_EQ(image.GetPixel(12, 4), values[i]);
  }
}

TEST(Raster, RefusesSizesAndTypes) {
  const std::tuple<int, unsigned, unsigned> refused[] = {
      {PRaster::type24Bit, 0, 5},
      {PRaster::type24Bit, 5, 0},
      {PRaster::type24Bit, 0xFFFFFFFF, 0xFFFFFFFF},
      {PRaster::type24Bit, (1 << 14) + 1, 1 << 14},
      {2, 5, 5}};
  for (const auto& [type, width, height] : refused) {
    PRaster image = makeImage(PRaster::type8Bit, 1, 1);
    EXPECT_EQ(image.CreateImage(type, width, height), 0) << width << 'x' << height;
    EXPECT_EQ(image.IsEmpty(), 1);
  }
  PRaster empty, image = makeImage(PRaster::type8Bit, 2, 2);
  empty.Clear(1);
  empty.SetPixel(0, 0, 1);
  EXPECT_EQ(empty.GetPixel(0, 0) + empty.width() + empty.GetDpmX(), 0u);
  EXPECT_EQ(empty.ConvertTo24bit() + empty.CopyImage(image) + image.RescaleImage(empty), 0);
}

// The weight of source pixel `index` in target pixel `at`.
double weightOf(unsigned index, unsigned source, unsigned at, unsigned target) {
  const double ratio = double(source) / target, begin = at * ratio, end = begin + ratio;
  if (target <= source)
    return std::max(0.0, std::min<double>(end, index + 1) - std::max<double>(begin, index)) / ratio;
  const double centre = std::clamp((begin + end) / 2 - 0.5, 0.0, source - 1.0);
  return std::max(0.0, 1 - std::fabs(centre - index));
}

double expectedLevel(const PRaster& source, const PRaster& target, unsigned x, unsigned y,
                     int shift) {
  double level = 0;
  for (unsigned i = 0; i < source.width() * source.height(); ++i) {
    const unsigned left = i % source.width(), top = i / source.width();
    level += weightOf(left, source.width(), x, target.width()) *
             weightOf(top, source.height(), y, target.height()) *
             (source.GetPixel(int(left), int(top)) >> shift & 0xFF);
  }
  return level;
}

TEST(Raster, RescalesToTheWeightedAverage) {
  const unsigned sizes[][4] = {
      {37, 29, 11, 7}, {64, 600, 5, 2}, {5, 4, 13, 9}, {31, 3, 7, 8}, {1, 1, 6, 5}};
  for (int type : {PRaster::type8Bit, PRaster::type24Bit})
    for (const auto& [sourceWidth, sourceHeight, width, height] : sizes) {
      PRaster source = makeImage(type, sourceWidth, sourceHeight);
      PRaster target = makeImage(type, width, height);
      source.Clear(0x00FFFE01);
      ASSERT_EQ(target.RescaleImage(source, nullptr, 0, 100), 1);
      for (unsigned i = 0; i < width * height; ++i)  // a uniform colour is exactly preserved
        ASSERT_EQ(target.GetPixel(int(i % width), int(i / width)), source.GetPixel(0, 0));
      fillNoise(source);
      ASSERT_EQ(target.RescaleImage(source), 1);
      for (unsigned i = 0; i < width * height * 3; ++i) {
        const unsigned x = i / 3 % width, y = i / 3 / width;
        const int shift = type == PRaster::type24Bit ? int(8 * (i % 3)) : 0;
        ASSERT_NEAR(target.GetPixel(int(x), int(y)) >> shift & 0xFF,
                    expectedLevel(source, target, x, y, shift), 0.6)
            << sourceWidth << 'x' << sourceHeight << " to " << width << 'x' << height;
      }
    }
}

TEST(Raster, PaletteAndBilevelImagesScaleToTheNearestPixel) {
  for (const auto& [type, value] :
       {std::pair{PRaster::type8Bit, 200u}, {PRaster::type1Bit, 255u}}) {
    PRaster source = makeImage(type, 4, 2), larger = makeImage(type, 8, 6);
    PRaster smaller = makeImage(type, 2, 3);
    if (type == PRaster::type8Bit) source.palette()[200] = {1, 2, 3, 0};
    for (int x : {2, 3}) source.SetPixel(x, 1, value);
    ASSERT_EQ(larger.RescaleImage(source) + smaller.RescaleImage(source), 2);
    for (int at = 0; at < 48; ++at)
      ASSERT_EQ(larger.GetPixel(at % 8, at / 8), at / 8 >= 3 && at % 8 >= 4 ? value : 0) << at;
    for (int at = 0; at < 6; ++at)
      EXPECT_EQ(smaller.GetPixel(at % 2, at / 2), at == 3 || at == 5 ? value : 0) << at;
    EXPECT_EQ(makeImage(PRaster::type24Bit, 2, 2).RescaleImage(source), 0);
  }
}

}  // namespace

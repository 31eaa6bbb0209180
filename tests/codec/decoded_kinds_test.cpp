// SPDX-License-Identifier: MIT
#include "picture_kinds.h"

#include "picture_fixture.h"

namespace exifkeep::test {
namespace {

using Colour = std::array<int, 3>;  // red, green, blue

Colour colourOf(Meaning meaning, int bits, unsigned x, unsigned y) {
  const bool single = samplesOf(meaning) < 3;
  const int last = levelOf(x, y, 3);
  Colour colour;
  for (unsigned c = 0; c < 3; ++c) {
    const int given = levelOf(x, y, single ? 0 : c), level = bits == 1 ? given / 128 * 255 : given;
    const bool alpha = meaning == Meaning::greyAlpha || meaning == Meaning::rgbAlpha;
    colour[c] = meaning == Meaning::inverseGrey ? 255 - level
                : meaning == Meaning::index     ? std::array{level, 255 - level, 7}[c]
                : alpha                         ? (level * last + 255 * (255 - last)) / 255
                : meaning == Meaning::inks      ? (255 - level) * (255 - last) / 255
                : meaning == Meaning::lights    ? level * last / 255
                                                : level;
  }
  return colour;
}

// `blackIsClear`: black pixels are transparent and become white.
void expectPicture(std::optional<PRaster> picture, const auto& kind, int bits, int tolerance,
                   bool blackIsClear = false) {
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->bitsPerPixel(), kind.delivered);
  ASSERT_TRUE(picture->width() == width && picture->height() == height);
  picture->ConvertTo24bit();
  for (unsigned i = 0; i < width * height * 3; ++i) {
    const unsigned x = i / 3 % width, y = i / 3 / width;
    const Colour colour = colourOf(kind.meaning, bits, x, y);
    const bool isClear = blackIsClear && colour[0] == 0;
    ASSERT_NEAR(picture->GetPixel(int(x), int(y)) >> (8 * (i % 3)) & 0xFF,
                isClear ? 255 : colour[i % 3], isClear ? 0 : tolerance)
        << x << ',' << y << " channel " << i % 3;
  }
}

using DecodedKinds = ScratchTest;

TEST_F(DecodedKinds, Tiff) {
  const std::vector<TiffKind> kinds = tiffKinds();
  for (const TiffKind& kind : kinds) {
    SCOPED_TRACE(&kind - kinds.data());
    writeTiff(path("a.tif"), kind);
    expectPicture(load(path("a.tif")), kind, kind.bits, kind.tolerance);
  }
}

TEST_F(DecodedKinds, Png) {
  const std::vector<PngKind> kinds = pngKinds();
  for (const PngKind& kind : kinds)
    for (int interlace : {PNG_INTERLACE_NONE, PNG_INTERLACE_ADAM7}) {
      SCOPED_TRACE(&kind - kinds.data());
      writePng(path("a.png"), kind, interlace);
      expectPicture(load(path("a.png")), kind, kind.bits, 1, kind.blackIsClear);
    }
}

TEST_F(DecodedKinds, Jpeg) {
  const std::vector<JpegKind> kinds = jpegKinds();
  for (const JpegKind& kind : kinds) {
    SCOPED_TRACE(&kind - kinds.data());
    writeJpeg(path("a.jpg"), kind);
    expectPicture(load(path("a.jpg")), kind, 8, 6);
  }

  // With data missing before the first restart marker, the first of three rows of blocks is lost.
  writeJpeg(path("a.jpg"), kinds[1]);
  std::string damaged = readFile(path("a.jpg"));
  writeFile(path("a.jpg"), damaged.erase(damaged.find("\xFF\xD0") - 20, 20));
  const std::optional<PRaster> picture = load(path("a.jpg"));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->lostRows(), 8u);
}

}  // namespace
}  // namespace exifkeep::test

// Every kind of JPEG, TIFF and PNG file that the codec reads, compared with the colours that its
// levels stand for.
#include "picture_kinds.h"

#include "picture_fixture.h"

namespace exifkeep::test {
namespace {

// `blackIsClear`: what would be black shows the white behind it.
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

using DecodedKinds = CodecTest;

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

  // Data missing before the first restart marker: of the three rows of blocks the first is lost.
  writeJpeg(path("a.jpg"), kinds[1]);
  Bytes damaged = bytesOf(path("a.jpg"));
  const Bytes marker = {0xFF, 0xD0};
  const auto at = std::ranges::search(damaged, marker).begin();
  damaged.erase(at - 20, at);
  writeBytes(path("a.jpg"), damaged);
  const std::optional<PRaster> picture = load(path("a.jpg"));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->lostRows(), 8u);
}

}  // namespace
}  // namespace exifkeep::test

// Saved TIFF files as others and we open them, for pictures of every kind of TIFF file; the codec's
// file, checked and moved.
#include <exifkeep/exifkeep.h>
#include <gmock/gmock.h>

#include "probe/tags.h"
#include "program/exif_fixture.h"
#include "tiff/codec_tiff.h"
#include "tiff/save_tiff.h"
#include "tiff/tiff_pictures.h"
#include "tiff_builder.h"

namespace exifkeep::test {
namespace {

using SavedFileTest = CodecTest;

TEST_F(SavedFileTest, EveryKindOfSource) {
  constexpr uint16_t rgb = PHOTOMETRIC_RGB, grey = PHOTOMETRIC_MINISBLACK;
  constexpr uint16_t none = COMPRESSION_NONE, chunky = PLANARCONFIG_CONTIG;
  const SourceKind kinds[] = {
      {"plain", rgb, 8, 3, none},
      {"LZW", rgb, 8, 3, COMPRESSION_LZW},
      {"Deflate", rgb, 8, 3, COMPRESSION_ADOBE_DEFLATE},
      {"16 bits", rgb, 16, 3, none},
      {"grey", grey, 8, 1, none},
      {"fax", PHOTOMETRIC_MINISWHITE, 1, 1, COMPRESSION_CCITTFAX4},
      {"palette", PHOTOMETRIC_PALETTE, 8, 1, none},
      {"CMYK", PHOTOMETRIC_SEPARATED, 8, 4, none},
      {"planar", rgb, 8, 3, none, PLANARCONFIG_SEPARATE},
      {"tiled", rgb, 8, 3, COMPRESSION_LZW, chunky, true},
      {"big-endian", rgb, 16, 3, none, chunky, false, true},
      {"no thumbnail", rgb, 8, 3, none, chunky, false, false, false},
  };
  for (const SourceKind& kind : kinds) {
    SCOPED_TRACE(kind.name);
    makeSource(path("a.tif"), kind);
    std::optional<PRaster> image = load(path("a.tif"));
    ASSERT_TRUE(image);
    const std::string source = summaryOf(path("a.tif"));
    EXPECT_EQ(source, "A camera maker 48 32 6 300 2004:07:01 12:00:00 2 a note N 30");
    PRaster host = patterned(24, 20, 10), thumbnail;
    for (PRaster* given : {static_cast<PRaster*>(nullptr), &host}) {
      ASSERT_EQ(SaveFile(path("a.tif").c_str(), path("b.TIFF").c_str(), &*image, given), 1);
      EXPECT_TRUE(showsPixels(path("b.TIFF"), *image));
      EXPECT_FALSE(hasTemporary());
      ASSERT_EQ(OpenExifFile(path("b.TIFF").c_str(), nullptr, &thumbnail), 1);
      EXPECT_EQ(thumbnail.width(), !kind.hasThumbnail ? 0u : given ? 20u : 160u);
    }
    EXPECT_TRUE(thumbnail.IsEmpty() || largestDifference(thumbnail, host) == 0);
    EXPECT_EQ(summaryOf(path("b.TIFF")), source);
  }
}

// The probe goes by content, the writers by name.
TEST_F(SavedFileTest, JpegNamedTiff) {
  const std::string jpeg = exifJpeg("A camera maker");
  writeBytes(path("a.tif"), Bytes(jpeg.begin(), jpeg.end()));
  PRaster image = patterned(24, 40, 30);
  ASSERT_EQ(SaveFile(path("a.tif").c_str(), path("b.tif").c_str(), &image, nullptr), 1);
  EXPECT_TRUE(showsPixels(path("b.tif"), image));
  EXPECT_THAT(summaryOf(path("b.tif")), testing::StartsWith("A camera maker 40 30 "));

  // Its rows are more than SHORT counts.
  PRaster tall = patterned(24, 1, 66000);
  ASSERT_EQ(SaveFile(path("a.tif").c_str(), path("tall.tif").c_str(), &tall, nullptr), 1);
  EXPECT_TRUE(showsPixels(path("tall.tif"), tall));

  // Without Exif data: the codec's directory is read as TIFF although the probe saw a JPEG file.
  ASSERT_EQ(save(path("c.jpg"), image), 1);
  std::filesystem::rename(path("c.jpg"), path("c.tif"));
  ExifReader reader;
  ASSERT_FALSE(reader.probeFile(path("c.tif").c_str()));
  reader.isJpeg = 1;
  ExifMetadata metadata = {};
  ASSERT_TRUE(saveNewExifTiff(reader, path("c.tif").c_str(), &image, nullptr, metadata.exif,
                              metadata.primary));
  EXPECT_TRUE(showsPixels(path("c.tif"), image));
  EXPECT_THAT(summaryOf(path("c.tif")), testing::StartsWith("Orvalle 40 30 1 "));
}

TEST_F(SavedFileTest, CodecStripIsTakenOnlyWhereItIsWhole) {
  constexpr uint32_t front = 8 + 2 + 24 + 4;  // and 6 bytes of pixels
  const auto file = [](uint32_t offset, Order order = Order::ii) {
    const Entry other = longs(tag::stripOffsets, {9});
    return tiffBytes({.image = {other, longs(tag::stripOffsets, {offset})}}, order) + "RGBRGB";
  };
  std::string elsewhere = file(front), negative = file(front);
  elsewhere[4] = 9;
  negative[9] = '\x80';
  const struct {
    std::string name, bytes;
    uint32_t offset;
    bool isWhole;
  } cases[] = {{"the last entry counts", file(front), front, true},
               {"big-endian", file(front, Order::mm), front, true},
               {"directory elsewhere", elsewhere, front, false},
               {"cut short", file(front + 1), front + 1, false},
               {"far outside", file(0xFFFFFFFF), 0xFFFFFFFF, false},
               {"over the header", file(8), 8, false},
               {"a negative number of entries", negative, 0, false},
               {"nothing", "", 0, false}};
  for (const auto& [name, bytes, offset, isWhole] : cases) {
    writeBytes(path("a.tif"), Bytes(bytes.begin(), bytes.end()));
    ExifFile opened(path("a.tif").c_str());
    EXPECT_EQ(findStripOffset(opened), offset) << name;
    EXPECT_EQ(locateStrip(opened, 6), isWhole ? std::optional(offset) : std::nullopt) << name;
  }
}

// A strip larger than the piece that moves at once, to the front and to the back.
TEST_F(SavedFileTest, StripMovesWhole) {
  PRaster picture = patterned(24, 700, 510);
  ASSERT_EQ(save(path("plain.tif"), picture), 1);
  const Bytes plain = bytesOf(path("plain.tif"));
  const ptrdiff_t size = 700 * 510 * 3;
  for (const int32_t thumbnailIfd : {0, 700}) {
    ExifReader reader;
    reader.thumbnailIfdOffset = thumbnailIfd;
    ExifMetadata metadata = {};
    ASSERT_TRUE(saveExifTiff(reader, path("a.tif").c_str(), &picture, nullptr, metadata));
    const Bytes saved = bytesOf(path("a.tif"));
    ExifFile file(path("a.tif").c_str());
    const ptrdiff_t front = findStripOffset(file);
    EXPECT_TRUE(std::equal(plain.end() - size, plain.end(), saved.begin() + front));
    // Not truncated.
    EXPECT_EQ(saved.size(), std::max(size_t(front + size), plain.size()));
  }
}

}  // namespace
}  // namespace exifkeep::test

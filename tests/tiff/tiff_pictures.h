// TIFF pictures with Exif data as the TIFF library writes them, of any kind of pixels, and what
// saved ones show.
#pragma once

#include <tiffio.h>
#include <windows.h>

#include <sstream>

#include "codec/picture_fixture.h"
#include "read/read_metadata.h"

namespace exifkeep::test {

struct SourceKind {
  const char* name;
  uint16_t photometric, bits, samples, compression, planar = PLANARCONFIG_CONTIG;
  bool isTiled = false, isBigEndian = false, hasThumbnail = true;
};

inline void writeImage(TIFF* tiff, const SourceKind& kind, uint32_t width, uint32_t height) {
  const std::pair<uint32_t, uint32_t> fields[] = {{TIFFTAG_IMAGEWIDTH, width},
                                                  {TIFFTAG_IMAGELENGTH, height},
                                                  {TIFFTAG_BITSPERSAMPLE, kind.bits},
                                                  {TIFFTAG_SAMPLESPERPIXEL, kind.samples},
                                                  {TIFFTAG_COMPRESSION, kind.compression},
                                                  {TIFFTAG_PHOTOMETRIC, kind.photometric},
                                                  {TIFFTAG_PLANARCONFIG, kind.planar},
                                                  {TIFFTAG_ORIENTATION, ORIENTATION_RIGHTTOP},
                                                  {TIFFTAG_TILEWIDTH, 16},
                                                  {TIFFTAG_TILELENGTH, 16}};
  for (size_t i = 0; i < (kind.isTiled ? 10 : 8); ++i)
    TIFFSetField(tiff, fields[i].first, fields[i].second);
  uint16_t map[3][256];
  for (int i = 0; i < 3 * 256; ++i) map[i % 3][i / 3] = static_cast<uint16_t>(i * 7919);
  if (kind.photometric == PHOTOMETRIC_PALETTE)
    TIFFSetField(tiff, TIFFTAG_COLORMAP, map[0], map[1], map[2]);
  Bytes piece(static_cast<size_t>(kind.isTiled ? TIFFTileSize(tiff) : TIFFStripSize(tiff)));
  const uint32_t count = kind.isTiled ? TIFFNumberOfTiles(tiff) : TIFFNumberOfStrips(tiff);
  const auto write = kind.isTiled ? TIFFWriteEncodedTile : TIFFWriteEncodedStrip;
  for (uint32_t i = 0, seed = 1; i < count; ++i) {
    for (auto& byte : piece) byte = static_cast<unsigned char>((seed = seed * 75 + 74) >> 3);
    write(tiff, i, piece.data(), static_cast<tmsize_t>(piece.size()));
  }
}

// 48 x 32 pixels, an Exif and a GPS directory; the thumbnail is grey, 80 x 60.
inline void makeSource(const std::string& path, const SourceKind& kind) {
  TIFF* tiff = TIFFOpen(path.c_str(), kind.isBigEndian ? "wb" : "wl");
  writeImage(tiff, kind, 48, 32);
  TIFFSetField(tiff, TIFFTAG_MAKE, "A camera maker");
  TIFFSetField(tiff, TIFFTAG_XRESOLUTION, 300.0);
  TIFFWriteDirectory(tiff);
  if (kind.hasThumbnail) {
    writeImage(tiff, {"", PHOTOMETRIC_MINISBLACK, 8, 1, COMPRESSION_NONE}, 80, 60);
    TIFFWriteDirectory(tiff);
  }
  uint64_t exif = 0, gps = 0;
  TIFFCreateEXIFDirectory(tiff);
  TIFFSetField(tiff, EXIFTAG_EXIFVERSION, "0220");
  TIFFSetField(tiff, EXIFTAG_EXPOSURETIME, 0.5);
  TIFFSetField(tiff, EXIFTAG_DATETIMEORIGINAL, "2004:07:01 12:00:00");
  TIFFSetField(tiff, EXIFTAG_MAKERNOTE, 6, "a note");
  TIFFWriteCustomDirectory(tiff, &exif);
  TIFFFreeDirectory(tiff);
  const double latitude[] = {48, 12, 30};
  TIFFCreateGPSDirectory(tiff);
  TIFFSetField(tiff, GPSTAG_LATITUDEREF, "N");
  TIFFSetField(tiff, GPSTAG_LATITUDE, latitude);
  TIFFWriteCustomDirectory(tiff, &gps);
  TIFFSetDirectory(tiff, 0);
  TIFFSetField(tiff, TIFFTAG_EXIFIFD, exif);
  TIFFSetField(tiff, TIFFTAG_GPSIFD, gps);
  TIFFRewriteDirectory(tiff);
  TIFFClose(tiff);
}

// Whether our codec and, as stored, the TIFF library see the very pixels of the image.
inline bool showsPixels(const std::string& path, PRaster& image) {
  std::optional<PRaster> ours = load(path);
  if (!ours || largestDifference(*ours, image) != 0) return false;
  TIFFSetWarningHandler(nullptr);
  TIFF* tiff = TIFFOpen(path.c_str(), "r");
  if (!tiff) return false;
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  std::vector<uint32_t> pixels(size_t{image.width()} * image.height());
  bool same = TIFFReadRGBAImageOriented(tiff, image.width(), image.height(), pixels.data(),
                                        ORIENTATION_TOPLEFT, 1) == 1;
  for (size_t i = 0; i < pixels.size(); ++i) {
    const BYTE* bgr = image.row(unsigned(i / image.width())) + i % image.width() * 3;
    same = same && pixels[i] == (0xFF000000u | uint32_t{bgr[0]} << 16 | bgr[1] << 8 | bgr[2]);
  }
  TIFFClose(tiff);
  return same;
}

inline bool hasTemporary() {
  char directory[256];
  GetTempPathA(sizeof directory, directory);
  return std::filesystem::exists(std::string(directory) + "/~orvalletemp.tif");
}

// What a source says of its picture and a saved file has to say again.
inline std::string summaryOf(const std::string& path) {
  ExifReader reader;
  ExifMetadata all = {};
  EXPECT_TRUE(
      readExifMetadata(reader, path.c_str(), all.exif, all.primary, &all.thumbnail, &all.gps));
  std::ostringstream text;
  text << all.primary.make << ' ' << all.primary.imageWidth << ' ' << all.primary.imageLength << ' '
       << all.primary.orientation << ' ' << all.primary.xResolution.numerator << ' '
       << all.exif.dateTimeOriginal << ' ' << all.exif.exposureTime.denominator << ' '
       << std::string(all.exif.makerNote, all.exif.makerNote + all.exif.makerNoteLength) << ' '
       << all.gps.gpsLatitudeRef << ' ' << all.gps.gpsLatitude[2].numerator;
  return text.str();
}

}  // namespace exifkeep::test

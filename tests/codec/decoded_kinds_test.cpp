// Every kind of JPEG, TIFF and PNG file that the codec reads, made here by the format libraries
// from one pattern of levels and compared with the colours those levels stand for.
#include <cstdio>
// after cstdio, which it relies on
#include <jpeglib.h>
#include <png.h>
#include <tiffio.h>

#include <array>
#include <cstring>
#include <memory>

#include "picture_fixture.h"

namespace {

constexpr unsigned width = 27, height = 21;  // two tiles of 16 in each direction
using Colour = std::array<int, 3>;           // red, green, blue

// The 8-bit level of a sample; its low nibble repeats the high one, so that 4 and 16 bits are
// exact.
int levelOf(unsigned x, unsigned y, unsigned sample) {
  const unsigned nibble = sample == 0   ? x / 2
                          : sample == 1 ? y / 2
                          : sample == 2 ? 15 - x / 2
                                        : 12 - y / 4;
  return int(nibble * 17);
}

int inked(int colour, int black) {
  return (255 - colour) * (255 - black) / 255;
}
int overWhite(int level, int alpha) {
  return (level * alpha + 255 * (255 - alpha)) / 255;
}

void putLevel(Bytes& row, std::size_t index, int bits, int level) {
  if (bits == 16) {
    const auto wide = static_cast<std::uint16_t>(level * 257);
    std::memcpy(&row[index * 2], &wide, 2);
  } else {
    const std::size_t position = index * unsigned(bits);
    row[position / 8] |=
        static_cast<unsigned char>(level >> (8 - bits) << (8 - unsigned(bits) - position % 8));
  }
}

void expectPicture(const std::optional<PRaster>& picture, unsigned bits, int tolerance,
                   const auto& colourAt) {
  ASSERT_TRUE(picture);
  PRaster copy;
  copy.CreateImage(picture->GetImageType(), picture->width(), picture->height());
  copy.CopyImage(*picture);
  EXPECT_EQ(picture->bitsPerPixel(), bits);
  ASSERT_EQ(picture->width(), width);
  ASSERT_EQ(picture->height(), height);
  copy.ConvertTo24bit();
  for (unsigned y = 0; y < height; ++y)
    for (unsigned x = 0; x < width; ++x) {
      const Colour colour = colourAt(x, y);
      for (int c = 0; c < 3; ++c)
        ASSERT_NEAR(copy.GetPixel(int(x), int(y)) >> (8 * c) & 0xFF, colour[unsigned(c)], tolerance)
            << x << ',' << y << " channel " << c;
    }
}

struct TiffKind {
  const char* name;
  const char* mode;
  int bits, samples, photometric, planar, compression;
  bool tiled;
  unsigned delivered;
  int tolerance;
};

Colour colourOf(const TiffKind& kind, unsigned x, unsigned y) {
  const auto level = [&](unsigned s) {
    const int full = levelOf(x, y, s);
    return kind.bits == 1 ? full / 128 * 255 : full;
  };
  switch (kind.photometric) {
    case PHOTOMETRIC_MINISBLACK:
      return {level(0), level(0), level(0)};
    case PHOTOMETRIC_MINISWHITE:
      return {255 - level(0), 255 - level(0), 255 - level(0)};
    case PHOTOMETRIC_PALETTE:
      return {level(0), 255 - level(0), 7};
    case PHOTOMETRIC_SEPARATED:
      return {inked(level(0), level(3)), inked(level(1), level(3)), inked(level(2), level(3))};
    default:
      if (kind.samples == 3) return {level(0), level(1), level(2)};
      return {overWhite(level(0), level(3)), overWhite(level(1), level(3)),
              overWhite(level(2), level(3))};
  }
}

// One plane of samples (planar) or all samples of a pixel together.
void writeTiffRow(TIFF* tiff, const TiffKind& kind, unsigned y, unsigned plane) {
  const unsigned samples = kind.planar == PLANARCONFIG_SEPARATE ? 1 : unsigned(kind.samples);
  Bytes row(width * samples * 2);
  for (unsigned x = 0; x < width; ++x)
    for (unsigned s = 0; s < samples; ++s)
      putLevel(row, x * samples + s, kind.bits, levelOf(x, y, plane + s));
  ASSERT_EQ(TIFFWriteScanline(tiff, row.data(), y, std::uint16_t(plane)), 1);
}

void writeTiffTiles(TIFF* tiff, const TiffKind& kind) {
  for (unsigned top = 0; top < height; top += 16)
    for (unsigned left = 0; left < width; left += 16) {
      Bytes tile(std::size_t(TIFFTileSize(tiff)));
      for (unsigned i = 0; i < 256; ++i)
        for (unsigned s = 0; s < unsigned(kind.samples); ++s)
          putLevel(tile, i * unsigned(kind.samples) + s, kind.bits,
                   levelOf(left + i % 16, top + i / 16, s) & 255);
      ASSERT_GT(TIFFWriteTile(tiff, tile.data(), left, top, 0, 0), 0);
    }
}

void writeTiff(const std::string& path, const TiffKind& kind) {
  const std::unique_ptr<TIFF, void (*)(TIFF*)> file(TIFFOpen(path.c_str(), kind.mode), TIFFClose);
  TIFF* tiff = file.get();
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, kind.bits);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, kind.samples);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, kind.photometric);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, kind.planar);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, kind.compression);
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_BOTRIGHT);  // has no effect
  if (kind.compression == COMPRESSION_JPEG)
    TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
  if (kind.photometric == PHOTOMETRIC_RGB && kind.samples == 4) {
    const std::uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
    TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &alpha);
  }
  if (kind.photometric == PHOTOMETRIC_PALETTE) {
    std::uint16_t red[256], green[256], blue[256];
    const int entries = 1 << kind.bits;
    for (int i = 0; i < entries; ++i) {
      red[i] = std::uint16_t(i * 65535 / (entries - 1));
      green[i] = std::uint16_t(65535 - red[i]);
      blue[i] = 7 * 257;
    }
    TIFFSetField(tiff, TIFFTAG_COLORMAP, red, green, blue);
  }
  if (kind.tiled) {
    TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
    TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
    writeTiffTiles(tiff, kind);
    return;
  }
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 16);
  for (unsigned plane = 0; plane < unsigned(kind.samples); ++plane) {
    if (plane > 0 && kind.planar == PLANARCONFIG_CONTIG) break;
    for (unsigned y = 0; y < height; ++y) writeTiffRow(tiff, kind, y, plane);
  }
}

using DecodedKinds = CodecTest;

TEST_F(DecodedKinds, Tiff) {
  constexpr int black = PHOTOMETRIC_MINISBLACK, white = PHOTOMETRIC_MINISWHITE;
  constexpr int rgb = PHOTOMETRIC_RGB, map = PHOTOMETRIC_PALETTE, inks = PHOTOMETRIC_SEPARATED;
  constexpr int together = PLANARCONFIG_CONTIG, apart = PLANARCONFIG_SEPARATE;
  constexpr int none = COMPRESSION_NONE, lzw = COMPRESSION_LZW;
  constexpr int deflate = COMPRESSION_ADOBE_DEFLATE;
  const TiffKind kinds[] = {
      {"bilevel", "wl", 1, 1, black, together, none, false, 1, 0},
      {"bilevel white is zero, G4", "wl", 1, 1, white, together, COMPRESSION_CCITTFAX4, false, 1,
       0},
      {"grey 4 bits", "wb", 4, 1, black, together, none, false, 8, 0},
      {"grey 8 bits LZW", "wl", 8, 1, black, together, lzw, false, 8, 0},
      {"grey 8 bits white is zero", "wb", 8, 1, white, together, none, false, 8, 0},
      {"grey 16 bits big-endian", "wb", 16, 1, black, together, deflate, false, 8, 0},
      {"grey tiled", "wl", 8, 1, black, together, none, true, 24, 0},
      {"palette 4 bits", "wl", 4, 1, map, together, none, false, 8, 0},
      {"palette 8 bits big-endian", "wb", 8, 1, map, together, lzw, false, 8, 1},
      {"RGB big-endian", "wb", 8, 3, rgb, together, none, false, 24, 0},
      {"RGB BigTIFF PackBits", "w8", 8, 3, rgb, together, COMPRESSION_PACKBITS, false, 24, 0},
      {"RGB 16 bits", "wb", 16, 3, rgb, together, lzw, false, 24, 0},
      {"RGB planar", "wl", 8, 3, rgb, apart, none, false, 24, 0},
      {"RGB 16 bits planar", "wb", 16, 3, rgb, apart, none, false, 24, 0},
      {"RGB tiled", "wl", 8, 3, rgb, together, none, true, 24, 0},
      {"RGB 16 bits tiled Deflate", "wb", 16, 3, rgb, together, deflate, true, 24, 0},
      {"RGB JPEG", "wl", 8, 3, PHOTOMETRIC_YCBCR, together, COMPRESSION_JPEG, false, 24, 60},
      {"RGB with alpha", "wl", 8, 4, rgb, together, none, false, 24, 1},
      {"CMYK", "wl", 8, 4, inks, together, lzw, false, 24, 1}};
  for (const TiffKind& kind : kinds) {
    SCOPED_TRACE(kind.name);
    writeTiff(path("a.tif"), kind);
    expectPicture(load(path("a.tif")), kind.delivered, kind.tolerance,
                  [&](unsigned x, unsigned y) { return colourOf(kind, x, y); });
  }
}

struct PngKind {
  const char* name;
  int type, bits;
  bool transparentKey;  // tRNS: level 0 (grey, RGB) or palette entry 0 at half
  unsigned delivered;
};

void writePng(const std::string& path, const PngKind& kind, int interlace) {
  FILE* file = std::fopen(path.c_str(), "wb");
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_init_io(png, file);
  png_set_IHDR(png, info, width, height, kind.bits, kind.type, interlace, 0, 0);
  if (kind.type == PNG_COLOR_TYPE_PALETTE) {
    png_color colours[256];
    const int entries = 1 << kind.bits;
    for (int i = 0; i < entries; ++i) {
      const auto level = static_cast<png_byte>(i * 255 / (entries - 1));
      colours[i] = {level, static_cast<png_byte>(255 - level), 7};
    }
    png_set_PLTE(png, info, colours, entries);
  }
  const png_byte half = 128;
  png_color_16 key = {};
  if (kind.transparentKey) png_set_tRNS(png, info, &half, 1, &key);
  png_write_info(png, info);
  if (kind.bits == 16) png_set_swap(png);
  const unsigned samples = png_get_channels(png, info);
  const bool hasAlpha = (kind.type & PNG_COLOR_MASK_ALPHA) != 0;
  std::vector<Bytes> rows(height, Bytes(width * samples * 2));
  std::vector<png_bytep> pointers;
  for (unsigned y = 0; y < height; ++y) {
    for (unsigned i = 0; i < width * samples; ++i) {
      const unsigned s = i % samples;
      putLevel(rows[y], i, kind.bits,
               levelOf(i / samples, y, hasAlpha && s + 1 == samples ? 3 : s));
    }
    pointers.push_back(rows[y].data());
  }
  png_write_image(png, pointers.data());
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  std::fclose(file);
}

Colour colourOf(const PngKind& kind, unsigned x, unsigned y) {
  const auto level = [&](unsigned s) {
    return kind.bits == 1 ? levelOf(x, y, s) / 128 * 255 : levelOf(x, y, s);
  };
  const bool isGrey = (kind.type & PNG_COLOR_MASK_COLOR) == 0;
  Colour colour = {level(0), level(isGrey ? 0 : 1), level(isGrey ? 0 : 2)};
  int alpha = 255;
  if ((kind.type & PNG_COLOR_MASK_ALPHA) != 0) alpha = level(3);
  if (kind.type == PNG_COLOR_TYPE_PALETTE) {
    colour = {level(0), 255 - level(0), 7};
    if (kind.transparentKey && level(0) == 0) alpha = 128;
  } else if (kind.transparentKey && colour == Colour{0, 0, 0}) {
    alpha = 0;
  }
  for (int& channel : colour) channel = overWhite(channel, alpha);
  return colour;
}

TEST_F(DecodedKinds, Png) {
  const PngKind kinds[] = {{"bilevel", PNG_COLOR_TYPE_GRAY, 1, false, 1},
                           {"bilevel, black transparent", PNG_COLOR_TYPE_GRAY, 1, true, 8},
                           {"grey 4 bits", PNG_COLOR_TYPE_GRAY, 4, false, 8},
                           {"grey, black transparent", PNG_COLOR_TYPE_GRAY, 8, true, 8},
                           {"grey 16 bits", PNG_COLOR_TYPE_GRAY, 16, false, 8},
                           {"grey and alpha", PNG_COLOR_TYPE_GRAY_ALPHA, 8, false, 8},
                           {"palette 1 bit", PNG_COLOR_TYPE_PALETTE, 1, false, 8},
                           {"palette 4 bits, half transparent", PNG_COLOR_TYPE_PALETTE, 4, true, 8},
                           {"palette 8 bits", PNG_COLOR_TYPE_PALETTE, 8, false, 8},
                           {"RGB", PNG_COLOR_TYPE_RGB, 8, false, 24},
                           {"RGB 16 bits", PNG_COLOR_TYPE_RGB, 16, false, 24},
                           {"RGB and alpha", PNG_COLOR_TYPE_RGBA, 8, false, 24},
                           {"RGB and alpha 16 bits", PNG_COLOR_TYPE_RGBA, 16, false, 24}};
  for (const PngKind& kind : kinds)
    for (int interlace : {PNG_INTERLACE_NONE, PNG_INTERLACE_ADAM7}) {
      SCOPED_TRACE(kind.name);
      writePng(path("a.png"), kind, interlace);
      expectPicture(load(path("a.png")), kind.delivered, 1,
                    [&](unsigned x, unsigned y) { return colourOf(kind, x, y); });
    }
}

struct JpegKind {
  const char* name;
  J_COLOR_SPACE given, stored;
  bool progressive, adobe;
  int restartRows;
  unsigned delivered;
};

void writeJpeg(const std::string& path, const JpegKind& kind) {
  FILE* file = std::fopen(path.c_str(), "wb");
  jpeg_compress_struct codec;
  jpeg_error_mgr errors;
  codec.err = jpeg_std_error(&errors);
  jpeg_create_compress(&codec);
  jpeg_stdio_dest(&codec, file);
  codec.image_width = width;
  codec.image_height = height;
  codec.input_components = kind.given == JCS_GRAYSCALE ? 1 : kind.given == JCS_CMYK ? 4 : 3;
  codec.in_color_space = kind.given;
  jpeg_set_defaults(&codec);
  jpeg_set_colorspace(&codec, kind.stored);
  jpeg_set_quality(&codec, 100, TRUE);
  codec.comp_info[0].h_samp_factor = codec.comp_info[0].v_samp_factor = 1;
  codec.write_Adobe_marker = kind.adobe;
  codec.restart_in_rows = kind.restartRows;
  if (kind.progressive) jpeg_simple_progression(&codec);
  jpeg_start_compress(&codec, TRUE);
  const unsigned samples = unsigned(codec.input_components);
  for (unsigned y = 0; y < height; ++y) {
    Bytes row(width * samples);
    for (unsigned i = 0; i < row.size(); ++i)
      row[i] = static_cast<unsigned char>(levelOf(i / samples, y, i % samples));
    JSAMPROW pointer = row.data();
    jpeg_write_scanlines(&codec, &pointer, 1);
  }
  jpeg_finish_compress(&codec);
  jpeg_destroy_compress(&codec);
  std::fclose(file);
}

TEST_F(DecodedKinds, Jpeg) {
  const JpegKind kinds[] = {{"grey", JCS_GRAYSCALE, JCS_GRAYSCALE, false, false, 0, 8},
                            {"grey progressive", JCS_GRAYSCALE, JCS_GRAYSCALE, true, false, 0, 8},
                            {"colour", JCS_RGB, JCS_YCbCr, false, false, 0, 24},
                            {"colour restarting", JCS_RGB, JCS_YCbCr, false, false, 1, 24},
                            {"colour progressive", JCS_RGB, JCS_YCbCr, true, false, 0, 24},
                            {"RGB stored", JCS_RGB, JCS_RGB, false, true, 0, 24},
                            {"CMYK", JCS_CMYK, JCS_CMYK, false, false, 0, 24},
                            {"CMYK inverted", JCS_CMYK, JCS_CMYK, false, true, 0, 24},
                            {"YCCK inverted", JCS_CMYK, JCS_YCCK, false, true, 0, 24}};
  for (const JpegKind& kind : kinds) {
    SCOPED_TRACE(kind.name);
    writeJpeg(path("a.jpg"), kind);
    expectPicture(load(path("a.jpg")), kind.delivered, 6, [&](unsigned x, unsigned y) -> Colour {
      const int a = levelOf(x, y, 0), b = levelOf(x, y, 1), c = levelOf(x, y, 2);
      const int d = levelOf(x, y, 3);
      if (kind.given == JCS_GRAYSCALE) return {a, a, a};
      if (kind.given == JCS_RGB) return {a, b, c};
      if (kind.adobe) return {a * d / 255, b * d / 255, c * d / 255};
      return {inked(a, d), inked(b, d), inked(c, d)};
    });
  }
}

}  // namespace

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

// What the samples of a pixel stand for. Alpha is the last one, black ink as well.
enum class Meaning { grey, inverseGrey, index, rgb, greyAlpha, rgbAlpha, inks, lights };

unsigned samplesOf(Meaning meaning) {
  const unsigned samples[] = {1, 1, 1, 3, 2, 4, 4, 4};
  return samples[int(meaning)];
}

// The 8-bit level of a sample: two equal nibbles, so that 4 and 16 bits hold it exactly.
int levelOf(unsigned x, unsigned y, unsigned sample) {
  const unsigned nibbles[] = {x / 2, y / 2, 15 - x / 2, 12 - y / 4};
  return int(nibbles[sample] * 17);
}

int overWhite(int level, int alpha) {
  return (level * alpha + 255 * (255 - alpha)) / 255;
}

Colour colourOf(Meaning meaning, int bits, unsigned x, unsigned y) {
  const auto level = [&](unsigned sample) {
    return bits == 1 ? levelOf(x, y, sample) / 128 * 255 : levelOf(x, y, sample);
  };
  const int a = level(0), b = level(1), c = level(2), last = level(3);
  switch (meaning) {
    case Meaning::grey:
      return {a, a, a};
    case Meaning::inverseGrey:
      return {255 - a, 255 - a, 255 - a};
    case Meaning::index:
      return {a, 255 - a, 7};
    case Meaning::rgb:
      return {a, b, c};
    case Meaning::greyAlpha:
      return {overWhite(a, last), overWhite(a, last), overWhite(a, last)};
    case Meaning::rgbAlpha:
      return {overWhite(a, last), overWhite(b, last), overWhite(c, last)};
    case Meaning::inks:
      return {(255 - a) * (255 - last) / 255, (255 - b) * (255 - last) / 255,
              (255 - c) * (255 - last) / 255};
    default:
      return {a * last / 255, b * last / 255, c * last / 255};
  }
}

// Samples `first` to `end` of the pixels of a row, packed.
Bytes rowOf(Meaning meaning, int bits, unsigned y, unsigned first, unsigned end) {
  Bytes row((width * (end - first) * unsigned(bits) + 7) / 8);
  for (unsigned i = 0; i < width * (end - first); ++i) {
    const unsigned sample = first + i % (end - first);
    const int level =
        levelOf(i / (end - first), y, meaning == Meaning::greyAlpha && sample == 1 ? 3 : sample);
    const auto wide = static_cast<std::uint16_t>(level * 257);
    const unsigned position = i * unsigned(bits);
    if (bits == 16)
      std::memcpy(&row[i * 2], &wide, 2);
    else
      row[position / 8] |=
          static_cast<unsigned char>(level >> (8 - bits) << (8 - unsigned(bits) - position % 8));
  }
  return row;
}

void expectPicture(std::optional<PRaster> picture, unsigned bits, int tolerance,
                   const auto& expected) {
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->bitsPerPixel(), bits);
  ASSERT_EQ(picture->width(), width);
  ASSERT_EQ(picture->height(), height);
  picture->ConvertTo24bit();
  for (unsigned y = 0; y < height; ++y)
    for (unsigned x = 0; x < width; ++x) {
      const Colour colour = expected(x, y);
      for (unsigned c = 0; c < 3; ++c)
        ASSERT_NEAR(picture->GetPixel(int(x), int(y)) >> (8 * c) & 0xFF, colour[c], tolerance)
            << x << ',' << y << " channel " << c;
    }
}

struct TiffKind {
  const char* mode;  // "wl" little-endian, "wb" big-endian, "w8" BigTIFF
  Meaning meaning;
  int bits, photometric, compression;
  bool planar, tiled;
  unsigned delivered;
  int tolerance = 1;
};

void writeTiffPixels(TIFF* tiff, const TiffKind& kind) {
  const unsigned samples = samplesOf(kind.meaning), pixelBytes = samples * unsigned(kind.bits) / 8;
  for (unsigned plane = 0; plane < (kind.planar ? samples : 1) && !kind.tiled; ++plane)
    for (unsigned y = 0; y < height; ++y) {
      Bytes row = kind.planar ? rowOf(kind.meaning, kind.bits, y, plane, plane + 1)
                              : rowOf(kind.meaning, kind.bits, y, 0, samples);
      TIFFWriteScanline(tiff, row.data(), y, std::uint16_t(plane));
    }
  for (unsigned top = 0; top < height && kind.tiled; top += 16)
    for (unsigned left = 0; left < width; left += 16) {
      Bytes tile(256 * pixelBytes);
      for (unsigned y = top; y < std::min(top + 16, height); ++y)
        std::memcpy(&tile[(y - top) * 16 * pixelBytes],
                    &rowOf(kind.meaning, kind.bits, y, 0, samples)[left * pixelBytes],
                    std::min(16u, width - left) * pixelBytes);
      TIFFWriteTile(tiff, tile.data(), left, top, 0, 0);
    }
}

void writeTiff(const std::string& path, const TiffKind& kind) {
  const std::unique_ptr<TIFF, void (*)(TIFF*)> file(TIFFOpen(path.c_str(), kind.mode), TIFFClose);
  TIFF* tiff = file.get();
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, kind.bits);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, samplesOf(kind.meaning));
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, kind.photometric);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG,
               kind.planar ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, kind.compression);
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_BOTRIGHT);  // has no effect
  if (kind.compression == COMPRESSION_JPEG)
    TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
  const std::uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
  if (kind.meaning == Meaning::rgbAlpha) TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &alpha);
  std::uint16_t red[256], green[256], blue[256];
  for (int i = 0; i < 256; ++i) {
    red[i] = std::uint16_t(std::min(65535, i * 65535 / ((1 << kind.bits) - 1)));
    green[i] = std::uint16_t(65535 - red[i]);
    blue[i] = 7 * 257;
  }
  if (kind.meaning == Meaning::index) TIFFSetField(tiff, TIFFTAG_COLORMAP, red, green, blue);
  TIFFSetField(tiff, kind.tiled ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP, 16);
  if (kind.tiled) TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
  writeTiffPixels(tiff, kind);
}

using DecodedKinds = CodecTest;

TEST_F(DecodedKinds, Tiff) {
  using enum Meaning;
  constexpr int none = COMPRESSION_NONE, lzw = COMPRESSION_LZW, zip = COMPRESSION_ADOBE_DEFLATE;
  const TiffKind kinds[] = {
      {"wl", grey, 1, PHOTOMETRIC_MINISBLACK, none, false, false, 1},
      {"wl", inverseGrey, 1, PHOTOMETRIC_MINISWHITE, COMPRESSION_CCITTFAX4, false, false, 1},
      {"wb", grey, 4, PHOTOMETRIC_MINISBLACK, none, false, false, 8},
      {"wl", inverseGrey, 8, PHOTOMETRIC_MINISWHITE, lzw, false, false, 8},
      {"wb", grey, 16, PHOTOMETRIC_MINISBLACK, zip, false, false, 8},
      {"wl", grey, 8, PHOTOMETRIC_MINISBLACK, none, false, true, 24},
      {"wl", index, 4, PHOTOMETRIC_PALETTE, none, false, false, 8},
      {"wb", index, 8, PHOTOMETRIC_PALETTE, lzw, false, false, 8},
      {"wb", rgb, 8, PHOTOMETRIC_RGB, none, false, false, 24},
      {"w8", rgb, 8, PHOTOMETRIC_RGB, COMPRESSION_PACKBITS, false, false, 24},
      {"wb", rgb, 16, PHOTOMETRIC_RGB, lzw, false, false, 24},
      {"wl", rgb, 8, PHOTOMETRIC_RGB, none, true, false, 24},
      {"wb", rgb, 16, PHOTOMETRIC_RGB, none, true, false, 24},
      {"wl", rgb, 8, PHOTOMETRIC_RGB, none, false, true, 24},
      {"wb", rgb, 16, PHOTOMETRIC_RGB, zip, false, true, 24},
      {"wl", rgb, 8, PHOTOMETRIC_YCBCR, COMPRESSION_JPEG, false, false, 24, 60},
      {"wl", rgbAlpha, 8, PHOTOMETRIC_RGB, none, false, false, 24},
      {"wl", inks, 8, PHOTOMETRIC_SEPARATED, lzw, false, false, 24}};
  for (const TiffKind& kind : kinds) {
    SCOPED_TRACE(&kind - kinds);
    writeTiff(path("a.tif"), kind);
    expectPicture(load(path("a.tif")), kind.delivered, kind.tolerance,
                  [&](unsigned x, unsigned y) { return colourOf(kind.meaning, kind.bits, x, y); });
  }
}

struct PngKind {
  Meaning meaning;
  int type, bits;
  bool blackIsClear;  // level or index 0 is transparent
  unsigned delivered;
};

void writePng(const std::string& path, const PngKind& kind, int interlace) {
  const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "wb"), std::fclose);
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_init_io(png, file.get());
  png_set_IHDR(png, info, width, height, kind.bits, kind.type, interlace, 0, 0);
  png_color colours[256];
  const int entries = std::min(256, 1 << kind.bits);
  for (int i = 0; i < entries; ++i) {
    const auto level = static_cast<png_byte>(i * 255 / (entries - 1));
    colours[i] = {level, static_cast<png_byte>(255 - level), 7};
  }
  if (kind.meaning == Meaning::index) png_set_PLTE(png, info, colours, entries);
  const png_byte clear = 0;
  const png_color_16 key = {};
  if (kind.blackIsClear) png_set_tRNS(png, info, &clear, 1, &key);
  png_write_info(png, info);
  if (kind.bits == 16) png_set_swap(png);
  std::vector<Bytes> rows;
  std::vector<png_bytep> pointers;
  for (unsigned y = 0; y < height; ++y)
    rows.push_back(rowOf(kind.meaning, kind.bits, y, 0, samplesOf(kind.meaning)));
  for (Bytes& row : rows) pointers.push_back(row.data());
  png_write_image(png, pointers.data());
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
}

TEST_F(DecodedKinds, Png) {
  using enum Meaning;
  const PngKind kinds[] = {{grey, PNG_COLOR_TYPE_GRAY, 1, false, 1},
                           {grey, PNG_COLOR_TYPE_GRAY, 1, true, 8},
                           {grey, PNG_COLOR_TYPE_GRAY, 4, false, 8},
                           {grey, PNG_COLOR_TYPE_GRAY, 16, true, 8},
                           {greyAlpha, PNG_COLOR_TYPE_GA, 8, false, 8},
                           {index, PNG_COLOR_TYPE_PALETTE, 1, false, 8},
                           {index, PNG_COLOR_TYPE_PALETTE, 4, true, 8},
                           {index, PNG_COLOR_TYPE_PALETTE, 8, false, 8},
                           {rgb, PNG_COLOR_TYPE_RGB, 8, false, 24},
                           {rgb, PNG_COLOR_TYPE_RGB, 16, false, 24},
                           {rgbAlpha, PNG_COLOR_TYPE_RGBA, 8, false, 24},
                           {rgbAlpha, PNG_COLOR_TYPE_RGBA, 16, false, 24}};
  for (const PngKind& kind : kinds)
    for (int interlace : {PNG_INTERLACE_NONE, PNG_INTERLACE_ADAM7}) {
      SCOPED_TRACE(&kind - kinds);
      writePng(path("a.png"), kind, interlace);
      expectPicture(load(path("a.png")), kind.delivered, 1, [&](unsigned x, unsigned y) {
        const Colour colour = colourOf(kind.meaning, kind.bits, x, y);
        return kind.blackIsClear && colour[0] == 0 ? Colour{255, 255, 255} : colour;
      });
    }
}

struct JpegKind {
  Meaning meaning;
  J_COLOR_SPACE given, stored;
  bool progressive, adobe;
  unsigned delivered;
};

void writeJpeg(const std::string& path, const JpegKind& kind) {
  const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "wb"), std::fclose);
  jpeg_compress_struct codec;
  jpeg_error_mgr errors;
  codec.err = jpeg_std_error(&errors);
  jpeg_create_compress(&codec);
  jpeg_stdio_dest(&codec, file.get());
  codec.image_width = width;
  codec.image_height = height;
  codec.input_components = int(samplesOf(kind.meaning));
  codec.in_color_space = kind.given;
  jpeg_set_defaults(&codec);
  jpeg_set_colorspace(&codec, kind.stored);
  jpeg_set_quality(&codec, 100, TRUE);
  codec.comp_info[0].h_samp_factor = codec.comp_info[0].v_samp_factor = 1;
  codec.write_Adobe_marker = kind.adobe;
  codec.restart_in_rows = 1;
  if (kind.progressive) jpeg_simple_progression(&codec);
  jpeg_start_compress(&codec, TRUE);
  for (unsigned y = 0; y < height; ++y) {
    Bytes row = rowOf(kind.meaning, 8, y, 0, samplesOf(kind.meaning));
    JSAMPROW pointer = row.data();
    jpeg_write_scanlines(&codec, &pointer, 1);
  }
  jpeg_finish_compress(&codec);
  jpeg_destroy_compress(&codec);
}

TEST_F(DecodedKinds, Jpeg) {
  using enum Meaning;
  const JpegKind kinds[] = {{grey, JCS_GRAYSCALE, JCS_GRAYSCALE, true, false, 8},
                            {rgb, JCS_RGB, JCS_YCbCr, false, false, 24},
                            {rgb, JCS_RGB, JCS_YCbCr, true, false, 24},
                            {rgb, JCS_RGB, JCS_RGB, false, true, 24},
                            {inks, JCS_CMYK, JCS_CMYK, false, false, 24},
                            {lights, JCS_CMYK, JCS_CMYK, false, true, 24},
                            {lights, JCS_CMYK, JCS_YCCK, true, true, 24}};
  for (const JpegKind& kind : kinds) {
    SCOPED_TRACE(&kind - kinds);
    writeJpeg(path("a.jpg"), kind);
    expectPicture(load(path("a.jpg")), kind.delivered, 6,
                  [&](unsigned x, unsigned y) { return colourOf(kind.meaning, 8, x, y); });
  }
}

}  // namespace

// SPDX-License-Identifier: MIT
// Writes small pictures of every kind that the codec reads, by the format libraries, from one
// pattern of levels: seeds for the fuzzers, and files for the codec's tests.
#pragma once

#include <cstdio>
// must come after cstdio
#include <jpeglib.h>
#include <png.h>
#include <tiffio.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace exifkeep::test {

using Bytes = std::vector<unsigned char>;

inline constexpr unsigned width = 27, height = 21;

// The meaning of a pixel's samples. Alpha or black ink is the last one.
enum class Meaning { grey, inverseGrey, index, rgb, greyAlpha, rgbAlpha, inks, lights };

inline unsigned samplesOf(Meaning meaning) {
  const unsigned samples[] = {1, 1, 1, 3, 2, 4, 4, 4};
  return samples[int(meaning)];
}

// The 8-bit level of a sample: two equal nibbles, so that it is exact in 4 and 16 bits.
inline int levelOf(unsigned x, unsigned y, unsigned sample) {
  const unsigned nibbles[] = {x / 2, y / 2, 15 - x / 2, 12 - y / 4};
  return int(nibbles[sample] * 17);
}

// Samples `first` to `end` of the pixels of a row, packed.
inline Bytes rowOf(Meaning meaning, int bits, unsigned y, unsigned first, unsigned end) {
  const unsigned count = end - first, depth = unsigned(bits);
  Bytes row((width * count * depth + 7) / 8);
  for (unsigned i = 0; i < width * count; ++i) {
    const unsigned sample = first + i % count, position = i * depth;
    const bool alpha = meaning == Meaning::greyAlpha && sample == 1;
    const int level = levelOf(i / count, y, alpha ? 3 : sample);
    if (bits == 16)
      row[i * 2] = row[i * 2 + 1] = static_cast<unsigned char>(level);
    else
      row[position / 8] |=
          static_cast<unsigned char>(level >> (8 - bits) << (8 - depth - position % 8));
  }
  return row;
}

enum Layout { strips, planes, tiles };

struct TiffKind {
  const char* mode;  // "wl" little-endian, "wb" big-endian, "w8" BigTIFF
  Meaning meaning;
  int bits, photometric, compression;
  unsigned delivered;
  Layout layout = strips;
  int tolerance = 1;
};

inline void writeTiffPixels(TIFF* tiff, const TiffKind& kind) {
  const unsigned samples = samplesOf(kind.meaning), pixelBytes = samples * unsigned(kind.bits) / 8;
  const unsigned count = kind.layout == planes ? 1 : samples;
  for (unsigned first = 0; first < samples && kind.layout != tiles; first += count)
    for (unsigned y = 0; y < height; ++y)
      TIFFWriteScanline(tiff, rowOf(kind.meaning, kind.bits, y, first, first + count).data(), y,
                        uint16_t(first));
  for (unsigned top = 0; top < height && kind.layout == tiles; top += 16) {
    Bytes tile(32 * 16 * pixelBytes);
    for (unsigned y = top; y < std::min(top + 16, height); ++y)
      std::ranges::copy(rowOf(kind.meaning, kind.bits, y, 0, samples),
                        tile.begin() + (y - top) * 32 * pixelBytes);
    TIFFWriteTile(tiff, tile.data(), 0, top, 0, 0);
  }
}

inline void writeTiff(const std::string& path, const TiffKind& kind) {
  const std::unique_ptr<TIFF, void (*)(TIFF*)> file(TIFFOpen(path.c_str(), kind.mode), TIFFClose);
  TIFF* tiff = file.get();
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, kind.bits);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, samplesOf(kind.meaning));
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, kind.photometric);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, kind.layout == planes ? 2 : 1);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, kind.compression);
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_BOTRIGHT);  // has no effect
  if (kind.compression == COMPRESSION_JPEG)
    TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
  const uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
  if (kind.meaning == Meaning::rgbAlpha) TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &alpha);
  std::vector<uint16_t> red, green, blue(256, 7 * 257);
  for (int i = 0; i < 256; ++i) {
    red.push_back(uint16_t(std::min(65535, i * 65535 / ((1 << kind.bits) - 1))));
    green.push_back(uint16_t(65535 - red.back()));
  }
  if (kind.meaning == Meaning::index)
    TIFFSetField(tiff, TIFFTAG_COLORMAP, red.data(), green.data(), blue.data());
  TIFFSetField(tiff, kind.layout == tiles ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP, 16);
  if (kind.layout == tiles) TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 32);
  writeTiffPixels(tiff, kind);
}

inline std::vector<TiffKind> tiffKinds() {
  using enum Meaning;
  constexpr int none = COMPRESSION_NONE, lzw = COMPRESSION_LZW, zip = COMPRESSION_ADOBE_DEFLATE;
  return {{"wl", grey, 1, PHOTOMETRIC_MINISBLACK, none, 1},
          {"wl", inverseGrey, 1, PHOTOMETRIC_MINISWHITE, COMPRESSION_CCITTFAX4, 1},
          {"wb", grey, 4, PHOTOMETRIC_MINISBLACK, none, 8},
          {"wl", inverseGrey, 8, PHOTOMETRIC_MINISWHITE, lzw, 8},
          {"wb", grey, 16, PHOTOMETRIC_MINISBLACK, zip, 8},
          {"wl", index, 4, PHOTOMETRIC_PALETTE, none, 8},
          {"w8", rgb, 8, PHOTOMETRIC_RGB, COMPRESSION_PACKBITS, 24},
          {"wb", rgb, 16, PHOTOMETRIC_RGB, lzw, 24},
          {"wl", rgb, 8, PHOTOMETRIC_RGB, none, 24, planes},
          {"wl", grey, 8, PHOTOMETRIC_MINISBLACK, none, 24, tiles},
          {"wb", rgb, 16, PHOTOMETRIC_RGB, zip, 24, tiles},
          {"wl", rgb, 8, PHOTOMETRIC_YCBCR, COMPRESSION_JPEG, 24, strips, 60},
          {"wl", rgbAlpha, 8, PHOTOMETRIC_RGB, none, 24},
          {"wl", inks, 8, PHOTOMETRIC_SEPARATED, lzw, 24}};
}

struct PngKind {
  Meaning meaning;
  int type, bits;
  bool blackIsClear;  // level or index 0 is transparent
  unsigned delivered;
};

inline void writePng(const std::string& path, const PngKind& kind, int interlace) {
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
  for (int pass = png_set_interlace_handling(png); pass > 0; --pass)
    for (unsigned y = 0; y < height; ++y)
      png_write_row(png, rowOf(kind.meaning, kind.bits, y, 0, samplesOf(kind.meaning)).data());
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
}

inline std::vector<PngKind> pngKinds() {
  using enum Meaning;
  return {
      {grey, PNG_COLOR_TYPE_GRAY, 1, false, 1},      {grey, PNG_COLOR_TYPE_GRAY, 1, true, 8},
      {grey, PNG_COLOR_TYPE_GRAY, 4, false, 8},      {grey, PNG_COLOR_TYPE_GRAY, 16, true, 8},
      {greyAlpha, PNG_COLOR_TYPE_GA, 8, false, 8},   {index, PNG_COLOR_TYPE_PALETTE, 4, true, 8},
      {rgb, PNG_COLOR_TYPE_RGB, 16, false, 24},      {rgbAlpha, PNG_COLOR_TYPE_RGBA, 8, false, 24},
      {rgbAlpha, PNG_COLOR_TYPE_RGBA, 16, false, 24}};
}

struct JpegKind {
  Meaning meaning;
  J_COLOR_SPACE given, stored;
  bool progressive, adobe;
  unsigned delivered;
};

inline void writeJpeg(const std::string& path, const JpegKind& kind) {
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

inline std::vector<JpegKind> jpegKinds() {
  using enum Meaning;
  return {{grey, JCS_GRAYSCALE, JCS_GRAYSCALE, true, false, 8},
          {rgb, JCS_RGB, JCS_RGB, false, true, 24},
          {inks, JCS_CMYK, JCS_CMYK, false, false, 24},
          {lights, JCS_CMYK, JCS_CMYK, false, true, 24},
          {lights, JCS_CMYK, JCS_YCCK, true, true, 24}};
}

}  // namespace exifkeep::test

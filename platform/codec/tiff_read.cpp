// SPDX-License-Identifier: MIT
// Plain pictures (grey, palette or RGB in strips of interleaved samples) are read row by row; all
// others through the library's conversion to red, green, blue and alpha, one strip or row of tiles
// at a time. Orientation is ignored.
#include "tiff_read.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "tiff_budget.h"
#include "tiff_handle.h"

namespace exifkeep {
namespace {

struct Layout {
  uint32_t width = 0;
  uint32_t height = 0;
  uint16_t bits = 1;
  uint16_t samples = 1;
  uint16_t planar = PLANARCONFIG_CONTIG;
  uint16_t format = SAMPLEFORMAT_UINT;
  uint16_t photometric = 0xFFFF;
  bool tiled = false;

  bool isRows() const {
    return !tiled && format == SAMPLEFORMAT_UINT && (samples == 1 || planar == PLANARCONFIG_CONTIG);
  }
  bool isGrey() const {
    return isRows() && samples == 1 && bits <= 16 && (bits & (bits - 1)) == 0 &&
           (photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE);
  }
  bool isPalette() const {
    return isRows() && samples == 1 && bits <= 8 && (bits & (bits - 1)) == 0 &&
           photometric == PHOTOMETRIC_PALETTE;
  }
  bool isRgb() const {
    return isRows() && samples == 3 && (bits == 8 || bits == 16) && photometric == PHOTOMETRIC_RGB;
  }
  bool isPlain() const { return isGrey() || isPalette() || isRgb(); }
};

Layout layoutOf(TIFF* tiff) {
  Layout layout;
  TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &layout.width);
  TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &layout.height);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &layout.bits);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &layout.samples);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_PLANARCONFIG, &layout.planar);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLEFORMAT, &layout.format);
  TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &layout.photometric);
  layout.tiled = TIFFIsTiled(tiff) != 0;
  return layout;
}

unsigned dotsPerMetre(TIFF* tiff, uint32_t tag) {
  float value = 0;
  uint16_t unit = RESUNIT_INCH;
  TIFFGetFieldDefaulted(tiff, TIFFTAG_RESOLUTIONUNIT, &unit);
  if (!TIFFGetField(tiff, tag, &value) || unit == RESUNIT_NONE) return 0;
  return perMetreFromPerInch(unit == RESUNIT_CENTIMETER ? value * 2.54 : value);
}

// Colour maps have 16-bit levels, but some writers store 8-bit levels, which are all below 256.
bool readPalette(TIFF* tiff, unsigned count, PictureDescription& picture) {
  uint16_t* red;
  uint16_t* green;
  uint16_t* blue;
  if (!TIFFGetField(tiff, TIFFTAG_COLORMAP, &red, &green, &blue)) return false;
  const auto isWide = [](uint16_t level) { return level >= 256; };
  const bool wide = std::any_of(red, red + count, isWide) ||
                    std::any_of(green, green + count, isWide) ||
                    std::any_of(blue, blue + count, isWide);
  const auto level = [wide](uint16_t value) {
    return static_cast<BYTE>(wide ? value >> 8 : value);
  };
  for (unsigned i = 0; i < count; ++i)
    picture.palette[i] = {level(blue[i]), level(green[i]), level(red[i]), 0};
  picture.coloursUsed = count;
  return true;
}

bool describe(TIFF* tiff, uint64_t fileSize, PictureDescription& picture) {
  const Layout layout = layoutOf(tiff);
  picture.width = layout.width;
  picture.height = layout.height;
  picture.dpmX = dotsPerMetre(tiff, TIFFTAG_XRESOLUTION);
  picture.dpmY = dotsPerMetre(tiff, TIFFTAG_YRESOLUTION);
  if (layout.isPalette()) {
    picture.bits = 8;
    if (!readPalette(tiff, 1u << layout.bits, picture)) return false;
  } else if (layout.isGrey()) {
    picture.bits = layout.bits == 1 ? 1 : 8;
  } else {
    picture.bits = 24;
  }
  return isAcceptable(picture, fileSize) && isWithinBudget(tiff, fileSize, !layout.isPlain());
}

BYTE level8(unsigned level16) {
  return static_cast<BYTE>((level16 + 128) / 257);
}

unsigned levelAt16(const BYTE* levels, size_t index) {
  uint16_t level;
  std::memcpy(&level, levels + 2 * index, sizeof level);
  return level;
}

// The index or unscaled level of column x in a row of 1, 2, 4 or 8 bits per pixel.
unsigned packedAt(const BYTE* row, unsigned x, unsigned bits) {
  const size_t position = size_t{x} * bits;
  return row[position / 8] >> (8 - bits - position % 8) & ((1u << bits) - 1);
}

void convertRow(const Layout& layout, const BYTE* from, BYTE* to) {
  if (layout.isRgb() && layout.bits == 8) {
    swapRedAndBlue(from, to, layout.width);
  } else if (layout.isRgb()) {
    for (size_t i = 0; i < size_t{layout.width} * 3; ++i)
      to[i / 3 * 3 + 2 - i % 3] = level8(levelAt16(from, i));
  } else if (layout.isPalette()) {
    for (unsigned x = 0; x < layout.width; ++x)
      to[x] = static_cast<BYTE>(packedAt(from, x, layout.bits));
  } else if (layout.bits == 1) {
    std::memcpy(to, from, (layout.width + 7) / 8);
  } else if (layout.bits == 16) {
    for (unsigned x = 0; x < layout.width; ++x) to[x] = level8(levelAt16(from, x));
  } else {
    const unsigned scale = 255 / ((1u << layout.bits) - 1);
    for (unsigned x = 0; x < layout.width; ++x)
      to[x] = static_cast<BYTE>(packedAt(from, x, layout.bits) * scale);
  }
}

void invertRow(const Layout& layout, BYTE* row) {
  const size_t count = layout.bits == 1 ? (layout.width + 7) / 8 : layout.width;
  for (size_t i = 0; i < count; ++i) row[i] = static_cast<BYTE>(~row[i]);
}

bool decodeRows(TIFF* tiff, const Layout& layout, const PictureRows& rows) {
  const uint64_t needed = (uint64_t{layout.width} * layout.bits * layout.samples + 7) / 8;
  if (TIFFScanlineSize64(tiff) != needed) return false;
  std::vector<BYTE> scanline(needed);
  const bool inverted = layout.isGrey() && layout.photometric == PHOTOMETRIC_MINISWHITE;
  for (unsigned y = 0; y < layout.height; ++y) {
    if (TIFFReadScanline(tiff, scanline.data(), y, 0) != 1) return false;
    convertRow(layout, scanline.data(), rows.row(y));
    if (inverted) invertRow(layout, rows.row(y));
    rows.report(y);
  }
  return true;
}

// Blends with white. Colours are premultiplied by their alpha.
void blendRow(const uint32_t* from, BYTE* to, unsigned width) {
  const auto onWhite = [](unsigned level, unsigned alpha) {
    return static_cast<BYTE>(std::min(255u, level + 255 - alpha));
  };
  for (unsigned x = 0; x < width; ++x, to += 3) {
    const unsigned alpha = TIFFGetA(from[x]);
    to[0] = onWhite(TIFFGetB(from[x]), alpha);
    to[1] = onWhite(TIFFGetG(from[x]), alpha);
    to[2] = onWhite(TIFFGetR(from[x]), alpha);
  }
}

class ColourConversion {
 public:
  explicit ColourConversion(TIFF* tiff) {
    char message[1024];
    begun_ = TIFFRGBAImageOK(tiff, message) && TIFFRGBAImageBegin(&image_, tiff, 1, message);
    image_.orientation = image_.req_orientation = ORIENTATION_TOPLEFT;
  }
  ~ColourConversion() {
    if (begun_) TIFFRGBAImageEnd(&image_);
  }
  ColourConversion(const ColourConversion&) = delete;
  ColourConversion& operator=(const ColourConversion&) = delete;

  bool decode(unsigned rowsAtOnce, const PictureRows& rows) {
    if (!begun_ || rowsAtOnce == 0) return false;
    const unsigned maxCount = std::min(rowsAtOnce, rows.height());
    std::vector<uint32_t> pixels(size_t{rows.width()} * maxCount);
    for (unsigned y = 0; y < rows.height(); y += maxCount) {
      const unsigned count = std::min(maxCount, rows.height() - y);
      image_.row_offset = static_cast<int>(y);
      if (!TIFFRGBAImageGet(&image_, pixels.data(), rows.width(), count)) return false;
      for (unsigned i = 0; i < count; ++i)
        blendRow(&pixels[size_t{i} * rows.width()], rows.row(y + i), rows.width());
      rows.report(y);
    }
    return true;
  }

 private:
  TIFFRGBAImage image_ = {};
  bool begun_ = false;
};

bool decodeConverted(TIFF* tiff, const PictureRows& rows) {
  return ColourConversion(tiff).decode(rowsInPart(tiff), rows);
}

}  // namespace

bool isTiff(const BYTE* start, size_t count) {
  if (count < 4) return false;
  const bool little = start[0] == 'I' && start[1] == 'I' && start[3] == 0;
  const bool big = start[0] == 'M' && start[1] == 'M' && start[2] == 0;
  const BYTE version = start[little ? 2 : 3];
  return (little || big) && (version == TIFF_VERSION_CLASSIC || version == TIFF_VERSION_BIG);
}

bool describeTiff(PictureReading& file, PictureDescription& picture) {
  TiffSource source(file);
  const TiffHandle tiff = source.hasDirectory() ? openTiff(source) : nullptr;
  return tiff && describe(tiff.get(), file.size(), picture);
}

bool decodeTiff(PictureReading& file, const PictureRows& rows) {
  TiffSource source(file);
  std::vector<BYTE> stored;  // must outlive the handle, which reads into it
  const TiffHandle tiff = source.hasDirectory() ? openTiff(source) : nullptr;
  PictureDescription picture;
  if (!tiff || !describe(tiff.get(), file.size(), picture) || !rows.fit(picture)) return false;
  const Layout layout = layoutOf(tiff.get());
  stored.resize(bytesReadAtOnce(tiff.get(), !layout.isPlain()));
  if (!TIFFReadBufferSetup(tiff.get(), stored.data(), static_cast<tmsize_t>(stored.size())))
    return false;
  return layout.isPlain() ? decodeRows(tiff.get(), layout, rows)
                          : decodeConverted(tiff.get(), rows);
}

}  // namespace exifkeep

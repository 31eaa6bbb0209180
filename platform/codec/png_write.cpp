// SPDX-License-Identifier: MIT
// Writes PNG files in the image's own depth: 24-bit RGB, 8-bit grey or palette, or 1 bit.
#include "picture_format.h"
#include "png_errors.h"
#include "png_read.h"

namespace exifkeep {
namespace {

void writeBytes(png_structp png, png_bytep bytes, size_t count) {
  if (!static_cast<const PictureOutput*>(png_get_io_ptr(png))->write(bytes, count))
    png_error(png, "write");
}

void flushNothing(png_structp) {}

class PngEncoder {
 public:
  PngEncoder(const PictureOutput& output, const PictureRows& rows) : output_(output), rows_(rows) {}
  ~PngEncoder() { png_destroy_write_struct(&png_, &info_); }
  PngEncoder(const PngEncoder&) = delete;
  PngEncoder& operator=(const PngEncoder&) = delete;

  // All errors return here.
  bool encode() {
    if (setjmp(errors_.escape) != 0) return false;
    create();
    writeHeader();
    for (unsigned y = 0; y < rows_.height(); ++y) {
      png_write_row(png_, rows_.row(y));
      rows_.report(y);
    }
    png_write_end(png_, nullptr);
    return true;
  }

 private:
  void create() {
    png_ =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, &errors_, PngErrors::leave, PngErrors::drop);
    if (!png_) std::longjmp(errors_.escape, 1);
    info_ = png_create_info_struct(png_);
    if (!info_) png_error(png_, "no memory");
    png_set_write_fn(png_, &output_, writeBytes, flushNothing);
    png_set_user_limits(png_, PRaster::maxPixels, PRaster::maxPixels);
    png_set_compression_buffer_size(png_, 65536);
  }

  void writeHeader() {
    const int type = rows_.bits() == 24 ? PNG_COLOR_TYPE_RGB
                     : rows_.isGrey()   ? PNG_COLOR_TYPE_GRAY
                                        : PNG_COLOR_TYPE_PALETTE;
    png_set_IHDR(png_, info_, rows_.width(), rows_.height(), rows_.bits() == 1 ? 1 : 8, type,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (type == PNG_COLOR_TYPE_PALETTE) setPalette();
    if (rows_.dpmX() != 0 && rows_.dpmY() != 0)
      png_set_pHYs(png_, info_, rows_.dpmX(), rows_.dpmY(), PNG_RESOLUTION_METER);
    png_write_info(png_, info_);
    if (rows_.bits() == 24) png_set_bgr(png_);
  }

  void setPalette() {
    png_color colours[256];
    for (unsigned i = 0; i < rows_.paletteSize(); ++i) {
      const RGBQUAD& colour = rows_.palette()[i];
      colours[i] = {colour.rgbRed, colour.rgbGreen, colour.rgbBlue};
    }
    png_set_PLTE(png_, info_, colours, static_cast<int>(rows_.paletteSize()));
  }

  PictureOutput output_;
  const PictureRows& rows_;
  PngErrors errors_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

bool encodePng(const PictureOutput& output, const PictureRows& rows) {
  return PngEncoder(output, rows).encode();
}

}  // namespace

const PictureFormat pngFormat = {isPng, describePng, decodePng, encodePng};

}  // namespace exifkeep

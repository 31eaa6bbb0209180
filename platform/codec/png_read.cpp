// SPDX-License-Identifier: MIT
// Decodes directly into the image's rows, pass by pass if interlaced. Decoding fails if the IEND
// chunk is missing. Memory and work are bounded: of the ancillary chunks only transparency and
// resolution are read, so that compressed texts and profiles are never inflated, and decoding fails
// if there is much image data after the last row.
#include "png_read.h"

#include <algorithm>
#include <cstdint>

#include "png_errors.h"

namespace exifkeep {
namespace {

class PngDecoder {
 public:
  explicit PngDecoder(PictureReading& file) : file_(file) {}
  ~PngDecoder() { png_destroy_read_struct(&png_, &info_, nullptr); }
  PngDecoder(const PngDecoder&) = delete;
  PngDecoder& operator=(const PngDecoder&) = delete;

  bool describe(PictureDescription& picture) {
    picture_ = &picture;
    return attempt(&PngDecoder::readHeader) && isAcceptable(picture, file_.size());
  }

  // REQUIRES: describe succeeded.
  bool decode(const PictureRows& rows) {
    rows_ = &rows;
    return attempt(&PngDecoder::readPixels);
  }

 private:
  // All errors return here.
  bool attempt(void (PngDecoder::*step)()) {
    if (setjmp(errors_.escape) != 0) return false;
    (this->*step)();
    return true;
  }

  static void readBytes(png_structp png, png_bytep bytes, size_t count) {
    PngDecoder& decoder = *static_cast<PngDecoder*>(png_get_io_ptr(png));
    if (count > decoder.bytesLeft_) png_error(png, "too much image data");
    decoder.bytesLeft_ -= count;
    if (decoder.file_.read(bytes, count) != count) png_error(png, "end of file");
  }

  void readHeader() {
    png_ =
        png_create_read_struct(PNG_LIBPNG_VER_STRING, &errors_, PngErrors::leave, PngErrors::drop);
    if (!png_) std::longjmp(errors_.escape, 1);
    info_ = png_create_info_struct(png_);
    if (!info_) png_error(png_, "no memory");
    png_set_read_fn(png_, this, readBytes);
    png_set_user_limits(png_, PRaster::maxPixels, PRaster::maxPixels);
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_AS_DEFAULT,
                                reinterpret_cast<png_const_bytep>("pHYs"), 1);
    png_read_info(png_, info_);
    picture_->width = png_get_image_width(png_, info_);
    picture_->height = png_get_image_height(png_, info_);
    picture_->bits = deliveredBits();
    picture_->dpmX = png_get_x_pixels_per_meter(png_, info_);
    picture_->dpmY = png_get_y_pixels_per_meter(png_, info_);
    if (colourType() == PNG_COLOR_TYPE_PALETTE) readPalette();
  }

  int colourType() const { return png_get_color_type(png_, info_); }
  int depth() const { return png_get_bit_depth(png_, info_); }
  bool isTransparent() const {
    return (colourType() & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(png_, info_, PNG_INFO_tRNS);
  }

  unsigned deliveredBits() const {
    if ((colourType() & ~PNG_COLOR_MASK_ALPHA) == PNG_COLOR_TYPE_RGB) return 24;
    return colourType() == PNG_COLOR_TYPE_GRAY && depth() == 1 && !isTransparent() ? 1 : 8;
  }

  void readPalette() {
    png_colorp colours = nullptr;
    int count = 0;
    png_bytep alphas = nullptr;
    int alphaCount = 0;
    png_get_PLTE(png_, info_, &colours, &count);
    png_get_tRNS(png_, info_, &alphas, &alphaCount, nullptr);
    count = std::min(count, 256);
    for (int i = 0; i < count; ++i) {
      const int alpha = i < alphaCount ? alphas[i] : 255;
      const auto onWhite = [alpha](int level) {
        return static_cast<BYTE>((level * alpha + 255 * (255 - alpha) + 127) / 255);
      };
      picture_->palette[static_cast<unsigned>(i)] = {
          onWhite(colours[i].blue), onWhite(colours[i].green), onWhite(colours[i].red), 0};
    }
    picture_->coloursUsed = static_cast<unsigned>(count);
  }

  void readPixels() {
    const size_t storedRow = png_get_rowbytes(png_, info_);
    setConversions();
    const int passes = png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
    const size_t rowBytes = (size_t{rows_->width()} * rows_->bits() + 7) / 8;
    if (png_get_rowbytes(png_, info_) != rowBytes) png_error(png_, "row size");
    for (int pass = 0; pass < passes; ++pass)
      for (unsigned y = 0; y < rows_->height(); ++y) {
        // At the last row the library inflates all remaining image data. Two rows' worth is more
        // than one row needs, however badly it was compressed.
        if (pass + 1 == passes && y + 1 == rows_->height()) bytesLeft_ = 2 * storedRow + 65536;
        png_read_row(png_, rows_->row(y), nullptr);
        rows_->report(y);
      }
    bytesLeft_ = unlimited;
    png_read_end(png_, nullptr);
  }

  void setConversions() {
    if (colourType() == PNG_COLOR_TYPE_PALETTE) {
      png_set_packing(png_);
      return;
    }
    if (rows_->bits() == 8) png_set_expand_gray_1_2_4_to_8(png_);
    if (isTransparent()) {
      png_set_tRNS_to_alpha(png_);
      // 8-bit levels even for 16-bit samples: libpng widens them itself, and scales to 8 bits
      // later.
      const png_color_16 white = {0, 0xFF, 0xFF, 0xFF, 0xFF};
      png_set_background_fixed(png_, &white, PNG_BACKGROUND_GAMMA_SCREEN, 0, 0);
    }
    png_set_scale_16(png_);
    png_set_bgr(png_);
  }

  static constexpr uint64_t unlimited = UINT64_MAX;

  PictureReading& file_;
  uint64_t bytesLeft_ = unlimited;  // how many may still be read
  PngErrors errors_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
  PictureDescription* picture_ = nullptr;
  const PictureRows* rows_ = nullptr;
};

}  // namespace

bool isPng(const BYTE* start, size_t count) {
  return count >= 8 && png_sig_cmp(start, 0, 8) == 0;
}

bool describePng(PictureReading& file, PictureDescription& picture) {
  return PngDecoder(file).describe(picture);
}

bool decodePng(PictureReading& file, const PictureRows& rows) {
  PngDecoder decoder(file);
  PictureDescription picture;
  return decoder.describe(picture) && rows.fit(picture) && decoder.decode(rows);
}

}  // namespace exifkeep

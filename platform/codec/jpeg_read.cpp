// SPDX-License-Identifier: MIT
// Decodes directly into the image's rows: the library supports blue, green, red and takes a pointer
// to each row, so that bottom-up order costs nothing. Memory and work are bounded: 1 GiB for the
// coefficients of a picture with several scans, 100 scans, and 2^32 pixels over all scans.
#include "jpeg_read.h"

#include <algorithm>
#include <bitset>
#include <cstdint>

#include "jpeg_errors.h"

namespace exifkeep {
namespace {

constexpr int rowsAtOnce = 16;

struct Source {
  jpeg_source_mgr base;  // must be first: the library passes its address
  PictureReading* file;
  bool ended;
  JOCTET bytes[65536];
};

void startSource(j_decompress_ptr) {}

// At the end of the file, supplies an EOI marker. It ends the picture if the scan is complete;
// otherwise the remaining rows are missing.
boolean fillSource(j_decompress_ptr codec) {
  Source& source = *reinterpret_cast<Source*>(codec->src);
  size_t count = source.file->read(source.bytes, sizeof source.bytes);
  if (count == 0) {
    source.ended = true;
    source.bytes[0] = 0xFF;
    source.bytes[1] = JPEG_EOI;
    count = 2;
  }
  source.base.next_input_byte = source.bytes;
  source.base.bytes_in_buffer = count;
  return TRUE;
}

void skipSource(j_decompress_ptr codec, long count) {
  if (count <= 0) return;
  jpeg_source_mgr& source = *codec->src;
  const size_t buffered = std::min(source.bytes_in_buffer, static_cast<size_t>(count));
  source.next_input_byte += buffered;
  source.bytes_in_buffer -= buffered;
  PictureReading& file = *reinterpret_cast<Source*>(codec->src)->file;
  file.moveTo(file.position() + static_cast<size_t>(count) - buffered);
}

void endSource(j_decompress_ptr) {}

// Called for every row of blocks, of every scan.
void limitScans(j_common_ptr common) {
  const j_decompress_ptr codec = reinterpret_cast<j_decompress_ptr>(common);
  const uint64_t pixels = uint64_t{codec->image_width} * codec->image_height;
  const uint64_t scans = static_cast<uint64_t>(codec->input_scan_number);
  if (scans > 100 || scans * pixels > uint64_t{1} << 32) ERREXIT(codec, JERR_BAD_PROGRESSION);
}

void convertCmyk(const JSAMPLE* cmyk, BYTE* bgr, unsigned width, bool inverted) {
  for (unsigned x = 0; x < width; ++x, cmyk += 4, bgr += 3)
    for (int c = 0; c < 3; ++c) {
      const unsigned ink = inverted ? cmyk[2 - c] : 255u - cmyk[2 - c];
      const unsigned black = inverted ? cmyk[3] : 255u - cmyk[3];
      bgr[c] = static_cast<BYTE>((ink * black + 127) / 255);
    }
}

bool losesPixels(int warning) {
  return warning == JWRN_HIT_MARKER || warning == JWRN_HUFF_BAD_CODE ||
         warning == JWRN_ARITH_BAD_CODE || warning == JWRN_MUST_RESYNC;
}

// The rows of MCUs (8 to 32 pixels high, according to the sampling factors) in which the data of a
// scan is damaged or missing. A scan is read from top to bottom.
class LostRows {
 public:
  // Records damage in the row that is being read.
  void note(const jpeg_decompress_struct& codec) {
    if (codec.input_scan_number != scan_) {
      scan_ = codec.input_scan_number;
      next_ = 0;
    }
    const unsigned end = endOfDamage(codec);
    for (next_ = std::max(next_, codec.input_iMCU_row); next_ < end; ++next_) {
      rows_.set(next_);
      if (scan_ == 1) inFirstScan_.set(next_);
    }
  }
  void noteAll(unsigned all) {
    for (unsigned row = 0; row < all; ++row) rows_.set(row);
  }

  // Whether no row is usable: later scans only refine the first one.
  bool areAll(unsigned all) const { return inFirstScan_.count() == all; }

  unsigned pixelRows(const jpeg_decompress_struct& codec) const {
    const auto rowHeight = static_cast<unsigned>(codec.max_v_samp_factor * DCTSIZE);
    const unsigned last = codec.total_iMCU_rows - 1;
    const auto lost = static_cast<unsigned>(rows_.count());
    const unsigned beyond = codec.total_iMCU_rows * rowHeight - codec.image_height;
    return lost * rowHeight - (rows_.test(last) ? beyond : 0);
  }

 private:
  // Everything after the damage is lost up to the next restart marker.
  static unsigned endOfDamage(const jpeg_decompress_struct& codec) {
    const uint64_t interval = codec.restart_interval;
    if (interval == 0) return codec.total_iMCU_rows;
    const bool single = codec.comps_in_scan == 1;
    const auto down = static_cast<unsigned>(single ? codec.cur_comp_info[0]->v_samp_factor : 1);
    const uint64_t units = std::max(1u, codec.MCUs_per_row * down);
    const uint64_t last = (codec.input_iMCU_row + 1) * units;
    const uint64_t rows = ((last + interval - 1) / interval * interval + units - 1) / units;
    return static_cast<unsigned>(std::min<uint64_t>(rows, codec.total_iMCU_rows));
  }

  using Rows = std::bitset<JPEG_MAX_DIMENSION / DCTSIZE + 1>;
  Rows rows_, inFirstScan_;
  int scan_ = 0;
  unsigned next_ = 0;  // the rows above it are finished in this scan
};

class JpegDecoder {
 public:
  explicit JpegDecoder(PictureReading& file) {
    codec_.err = &errors_.base;
    codec_.client_data = this;
    errors_.base.emit_message = heed;
    source_.file = &file;
    source_.ended = false;
    source_.base = {nullptr,  0, startSource, fillSource, skipSource, jpeg_resync_to_restart,
                    endSource};
    watch_.progress_monitor = limitScans;
  }
  ~JpegDecoder() { jpeg_destroy_decompress(&codec_); }
  JpegDecoder(const JpegDecoder&) = delete;
  JpegDecoder& operator=(const JpegDecoder&) = delete;

  bool describe(PictureDescription& picture) {
    picture_ = &picture;
    return attempt(&JpegDecoder::readHeader) && isAcceptable(picture, source_.file->size());
  }

  // True if at least one row could be decoded.
  bool decode(const PictureRows& rows) {
    rows_ = &rows;
    if (!attempt(&JpegDecoder::readPixels)) return false;
    if (lost_.areAll(codec_.total_iMCU_rows)) return false;
    // Without EOI more scans may be missing, which affects every row.
    if (source_.ended && jpeg_has_multiple_scans(&codec_)) lost_.noteAll(codec_.total_iMCU_rows);
    rows.reportLost(lost_.pixelRows(codec_));
    return true;
  }

 private:
  // Only some warnings mean that pixels are lost. Others (extraneous bytes, unknown JFIF revisions,
  // odd progressions) are harmless.
  static void heed(j_common_ptr common, int level) {
    if (level >= 0 || !losesPixels(common->err->msg_code)) return;
    JpegDecoder& decoder = *static_cast<JpegDecoder*>(common->client_data);
    decoder.lost_.note(decoder.codec_);
  }

  // All errors return here.
  bool attempt(void (JpegDecoder::*step)()) {
    if (setjmp(errors_.escape) != 0) return false;
    (this->*step)();
    return true;
  }

  void readHeader() {
    jpeg_create_decompress(&codec_);
    codec_.mem->max_memory_to_use = 1L << 30;
    codec_.src = &source_.base;
    codec_.progress = &watch_;
    jpeg_read_header(&codec_, TRUE);
    picture_->width = codec_.image_width;
    picture_->height = codec_.image_height;
    picture_->bits = codec_.jpeg_color_space == JCS_GRAYSCALE ? 8 : 24;
    if (codec_.saw_JFIF_marker) {
      const double unit = codec_.density_unit == 1 ? 1 : codec_.density_unit == 2 ? 2.54 : 0;
      picture_->dpmX = perMetreFromPerInch(codec_.X_density * unit);
      picture_->dpmY = perMetreFromPerInch(codec_.Y_density * unit);
    }
  }

  void readPixels() {
    switch (codec_.jpeg_color_space) {
      case JCS_GRAYSCALE: codec_.out_color_space = JCS_GRAYSCALE; break;
      case JCS_CMYK:
      case JCS_YCCK: codec_.out_color_space = JCS_CMYK; break;
      default: codec_.out_color_space = JCS_EXT_BGR;
    }
    jpeg_start_decompress(&codec_);
    if (codec_.out_color_space == JCS_CMYK)
      readCmykRows();
    else
      readRows();
  }

  void readRows() {
    JSAMPROW rows[rowsAtOnce];
    while (codec_.output_scanline < codec_.output_height) {
      const unsigned y = codec_.output_scanline;
      const unsigned count = std::min<unsigned>(rowsAtOnce, codec_.output_height - y);
      for (unsigned i = 0; i < count; ++i) rows[i] = rows_->row(y + i);
      jpeg_read_scanlines(&codec_, rows, count);
      rows_->report(y);
    }
  }

  // In files with an Adobe marker (APP14), CMYK is inverted.
  void readCmykRows() {
    JSAMPARRAY cmyk = codec_.mem->alloc_sarray(reinterpret_cast<j_common_ptr>(&codec_), JPOOL_IMAGE,
                                               codec_.output_width * 4, 1);
    while (codec_.output_scanline < codec_.output_height) {
      const unsigned y = codec_.output_scanline;
      jpeg_read_scanlines(&codec_, cmyk, 1);
      convertCmyk(cmyk[0], rows_->row(y), codec_.output_width, codec_.saw_Adobe_marker);
      rows_->report(y);
    }
  }

  jpeg_decompress_struct codec_ = {};
  JpegErrors errors_;
  Source source_;
  jpeg_progress_mgr watch_ = {};
  LostRows lost_;
  PictureDescription* picture_ = nullptr;
  const PictureRows* rows_ = nullptr;
};

}  // namespace

bool isJpeg(const BYTE* start, size_t count) {
  return count >= 3 && start[0] == 0xFF && start[1] == 0xD8 && start[2] == 0xFF;
}

bool describeJpeg(PictureReading& file, PictureDescription& picture) {
  return JpegDecoder(file).describe(picture);
}

bool decodeJpeg(PictureReading& file, const PictureRows& rows) {
  JpegDecoder decoder(file);
  PictureDescription picture;
  return decoder.describe(picture) && rows.fit(picture) && decoder.decode(rows);
}

}  // namespace exifkeep

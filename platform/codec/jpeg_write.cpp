// SPDX-License-Identifier: MIT
// Writes JPEG files with exactly these header segments, in this order: SOI, APP0 of 18 bytes, two
// DQT of 69, SOF0 of 19, four DHT of 33, 183, 33 and 183, SOS header of 14 (ITU-T T.81 B.2, with
// the tables of K.3). JpegStream::compact relies on this layout.
#include <algorithm>
#include <cstring>

#include "jpeg_errors.h"
#include "jpeg_read.h"
#include "picture_format.h"

namespace exifkeep {
namespace {

constexpr int quality = 90;
constexpr int rowsAtOnce = 16;

struct Destination {
  jpeg_destination_mgr base;  // must be first: the library passes its address
  const PictureOutput* output;
  JOCTET bytes[65536];
};

Destination& destinationOf(j_compress_ptr codec) {
  return *reinterpret_cast<Destination*>(codec->dest);
}

void flush(j_compress_ptr codec, size_t count) {
  Destination& destination = destinationOf(codec);
  if (!destination.output->write(destination.bytes, count)) ERREXIT(codec, JERR_FILE_WRITE);
  destination.base.next_output_byte = destination.bytes;
  destination.base.free_in_buffer = sizeof destination.bytes;
}

void startDestination(j_compress_ptr codec) {
  destinationOf(codec).base.next_output_byte = destinationOf(codec).bytes;
  destinationOf(codec).base.free_in_buffer = sizeof destinationOf(codec).bytes;
}

// The library calls this when the buffer is full, whatever the counter says.
boolean emptyDestination(j_compress_ptr codec) {
  flush(codec, sizeof destinationOf(codec).bytes);
  return TRUE;
}

void endDestination(j_compress_ptr codec) {
  flush(codec, sizeof destinationOf(codec).bytes - codec->dest->free_in_buffer);
}

class JpegEncoder {
 public:
  JpegEncoder(const PictureOutput& output, const PictureRows& rows) : rows_(rows) {
    codec_.err = &errors_.base;
    destination_.base = {nullptr, 0, startDestination, emptyDestination, endDestination};
    destination_.output = &output;
  }
  ~JpegEncoder() { jpeg_destroy_compress(&codec_); }
  JpegEncoder(const JpegEncoder&) = delete;
  JpegEncoder& operator=(const JpegEncoder&) = delete;

  // All errors return here.
  bool encode() {
    if (setjmp(errors_.escape) != 0) return false;
    describe();
    jpeg_start_compress(&codec_, TRUE);
    if (rows_.bits() == 24)
      writeRows();
    else
      writeExpandedRows();
    jpeg_finish_compress(&codec_);
    return true;
  }

 private:
  void describe() {
    jpeg_create_compress(&codec_);
    codec_.dest = &destination_.base;
    codec_.image_width = rows_.width();
    codec_.image_height = rows_.height();
    codec_.input_components = 3;
    codec_.in_color_space = JCS_EXT_BGR;
    jpeg_set_defaults(&codec_);
    jpeg_set_quality(&codec_, quality, TRUE);
    codec_.comp_info[0].v_samp_factor = 1;  // 4:2:2 instead of the default 4:2:0
    setDensity();
  }

  // Without a known resolution, the file has an aspect ratio of 1:1.
  void setDensity() {
    const unsigned x = PRaster::dotsPerInch(rows_.dpmX());
    const unsigned y = PRaster::dotsPerInch(rows_.dpmY());
    if (x == 0 || y == 0 || x > 0xFFFF || y > 0xFFFF) return;
    codec_.density_unit = 1;
    codec_.X_density = static_cast<UINT16>(x);
    codec_.Y_density = static_cast<UINT16>(y);
  }

  void writeRows() {
    JSAMPROW rows[rowsAtOnce];
    while (codec_.next_scanline < codec_.image_height) {
      const unsigned y = codec_.next_scanline;
      const unsigned count = std::min<unsigned>(rowsAtOnce, codec_.image_height - y);
      for (unsigned i = 0; i < count; ++i) rows[i] = rows_.row(y + i);
      jpeg_write_scanlines(&codec_, rows, count);
      rows_.report(y);
    }
  }

  void writeExpandedRows() {
    JSAMPARRAY row = codec_.mem->alloc_sarray(reinterpret_cast<j_common_ptr>(&codec_), JPOOL_IMAGE,
                                              codec_.image_width * 3, 1);
    while (codec_.next_scanline < codec_.image_height) {
      rows_.expand(codec_.next_scanline, row[0]);
      rows_.report(codec_.next_scanline);
      jpeg_write_scanlines(&codec_, row, 1);
    }
  }

  jpeg_compress_struct codec_ = {};
  JpegErrors errors_;
  Destination destination_;
  const PictureRows& rows_;
};

bool encodeJpeg(const PictureOutput& output, const PictureRows& rows) {
  return JpegEncoder(output, rows).encode();
}

}  // namespace

const PictureFormat jpegFormat = {isJpeg, describeJpeg, decodeJpeg, encodeJpeg};

}  // namespace exifkeep

// Which messages of the JPEG library end a decoding: all errors, and those warnings that say pixels
// are lost. Others (extraneous bytes, unknown JFIF revisions, odd progressions) do no harm.
#include "jpeg_errors.h"

namespace exifkeep {
namespace {

[[noreturn]] void leave(j_common_ptr codec) {
  std::longjmp(reinterpret_cast<JpegErrors*>(codec->err)->escape, 1);
}

bool losesPixels(int warning) {
  return warning == JWRN_HIT_MARKER || warning == JWRN_HUFF_BAD_CODE ||
         warning == JWRN_ARITH_BAD_CODE || warning == JWRN_MUST_RESYNC;
}

void judge(j_common_ptr codec, int level) {
  if (level < 0 && losesPixels(codec->err->msg_code)) leave(codec);
}

void printNothing(j_common_ptr) {}

}  // namespace

JpegErrors::JpegErrors() noexcept {
  jpeg_std_error(&base);
  base.error_exit = leave;
  base.emit_message = judge;
  base.output_message = printNothing;
}

}  // namespace exifkeep

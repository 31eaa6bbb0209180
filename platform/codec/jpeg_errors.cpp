// SPDX-License-Identifier: MIT
#include "jpeg_errors.h"

namespace exifkeep {
namespace {

[[noreturn]] void leave(j_common_ptr codec) {
  std::longjmp(reinterpret_cast<JpegErrors*>(codec->err)->escape, 1);
}

void drop(j_common_ptr, int) {}

void printNothing(j_common_ptr) {}

}  // namespace

JpegErrors::JpegErrors() {
  jpeg_std_error(&base);
  base.error_exit = leave;
  base.emit_message = drop;
  base.output_message = printNothing;
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// Error handling for the PNG library: errors jump to `escape`, which the caller of the library
// sets. No function between there and the library may have an object with a destructor. Warnings
// are ignored and nothing is printed.
#pragma once

#include <png.h>

#include <csetjmp>

namespace exifkeep {

struct PngErrors {
  std::jmp_buf escape;

  [[noreturn]] static void leave(png_structp png, png_const_charp) {
    std::longjmp(static_cast<PngErrors*>(png_get_error_ptr(png))->escape, 1);
  }
  static void drop(png_structp, png_const_charp) {}
};

}  // namespace exifkeep

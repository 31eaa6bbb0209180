// Errors of the PNG library as a way back out of it: they jump to `escape`, which the caller of the
// library sets; so no function between there and the library may hold an object that needs its
// destructor. Warnings are dropped, nothing is printed.
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

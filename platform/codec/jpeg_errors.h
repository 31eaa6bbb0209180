// Errors of the JPEG library as a way back out of it: they jump to `escape`, which the caller of
// the library sets; so no function between there and the library may hold an object that needs its
// destructor. Nothing is printed.
#pragma once

#include <csetjmp>
#include <cstddef>
#include <cstdio>

#include <jpeglib.h>
// after jpeglib.h, which it relies on
#include <jerror.h>

namespace exifkeep {

struct JpegErrors {
  jpeg_error_mgr base;  // first: the library hands back its address
  std::jmp_buf escape;

  JpegErrors() noexcept;
  JpegErrors(const JpegErrors&) = delete;
  JpegErrors& operator=(const JpegErrors&) = delete;
};

}  // namespace exifkeep

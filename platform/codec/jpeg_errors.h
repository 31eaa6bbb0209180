// SPDX-License-Identifier: MIT
// Error handling for the JPEG library: errors jump to `escape`, which the caller of the library
// sets. No function between there and the library may have an object with a destructor. Warnings
// are ignored and nothing is printed.
#pragma once

#include <csetjmp>
#include <cstddef>
#include <cstdio>

#include <jpeglib.h>
// must come after jpeglib.h
#include <jerror.h>

namespace exifkeep {

struct JpegErrors {
  jpeg_error_mgr base;  // must be first: the library passes its address
  std::jmp_buf escape;

  JpegErrors();
  JpegErrors(const JpegErrors&) = delete;
  JpegErrors& operator=(const JpegErrors&) = delete;
};

}  // namespace exifkeep

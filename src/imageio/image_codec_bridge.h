// SPDX-License-Identifier: MIT
// The picture codec: all pictures are decoded and encoded through this class.
#pragma once

#include <afxwin.h>
#include <windows.h>

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "imageio/praster_block.h"

namespace exifkeep {

struct CodecFormatEntry {
  char extension[8];  // without the dot; NUL-terminated unless all 8 bytes are used
  int32_t readable;
  int32_t writable;
};

// Receives the bytes of a picture file from the codec in order.
class PictureSink {
 public:
  // Returns false to end the save. May throw std::bad_alloc.
  virtual bool take(std::span<const uint8_t> bytes) = 0;

 protected:
  ~PictureSink() = default;
};

class ImageCodecBridge : public CObject {
 public:
  static constexpr int maxFormats = 25;

  // Gets the codec's formats, at most the first maxFormats. False if there are none.
  bool loadCapabilities();

  // The index of the first format with that extension, in any case; -1 if there is none.
  int findFormat(std::string_view extension) const;

  bool canWrite(std::string_view extension) const;

  // Decodes a picture of at most `maxPixels` pixels; null on any failure.
  std::unique_ptr<PRasterBlock> loadImageFile(const char* path,
                                              uint64_t maxPixels = PRaster::maxPixels) const;

  // Encodes a picture that is not empty in the format of the path's extension. If the codec cannot
  // write files of that extension, shows the framework's message box and gives the sink nothing.
  // After a failure, GetLastError is the system's error, or ERROR_SUCCESS if the system did not
  // cause it.
  bool saveImageFile(const char* path, PRaster& image, PictureSink& sink) const;

  // Shows that message box.
  static void showUnwritable();

  // The codec's progress callback: does nothing and returns 0.
  static int codecProgress(int, int, int);

  std::array<CodecFormatEntry, maxFormats> formats = {};
  int16_t formatCount = 0;
};

}  // namespace exifkeep

// The only way by which pictures are decoded and encoded: the codec's format table, loading a file
// into a new image, saving an image under a name whose extension the codec can write.
#pragma once

#include <afxwin.h>
#include <windows.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "imageio/praster_block.h"

namespace exifkeep {

struct CodecFormatEntry {
  char extension[8];  // without the dot; NUL-terminated unless all 8 bytes are used
  int32_t readable;
  int32_t writable;
};

class ImageCodecBridge : public CObject {
 public:
  static constexpr int maxFormats = 25;

  // Fills the format table from the codec; returns whether it succeeded. Reports of more than
  // maxFormats formats are cut to the first maxFormats.
  bool loadCapabilities();

  // The index of the first format of that extension (any case), -1 when there is none.
  int findFormat(std::string_view extension) const;

  bool canWrite(std::string_view extension) const;

  // Decodes a picture of at most `mostPixels` pixels; null on any failure.
  std::unique_ptr<PRasterBlock> loadImageFile(const char* path,
                                              uint64_t mostPixels = PRaster::maxPixels) const;

  // Encodes a picture that is not empty. A name that the codec cannot write shows the framework's
  // message box once and writes nothing. When the system is what failed, GetLastError says how,
  // else ERROR_SUCCESS.
  bool saveImageFile(const char* path, PRaster& image) const;

  // That message box: a picture cannot be saved under its name.
  static void showUnwritable();

  // What the codec calls while it works: does nothing, returns 0.
  static int codecProgress(int, int, int);

  std::array<CodecFormatEntry, maxFormats> formats = {};
  int16_t formatCount = 0;
};

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
#include "picture_preview.h"

#include <exifkeep/exifkeep.h>
#include <pxcodec32.h>

#include <algorithm>
#include <new>

#include "image_files.h"
#include "system.h"

namespace program {
namespace {

// Twice the size shown on the page, for screens of high resolution.
constexpr unsigned maxSide = 320;

bool shrink(PRaster& image) {
  const unsigned longer = std::max(image.width(), image.height());
  if (longer <= maxSide) return true;
  const auto scaled = [longer](unsigned side) {
    return std::max(1u, static_cast<unsigned>(uint64_t{side} * maxSide / longer));
  };
  PRaster small;
  if (!small.CreateImage(PRaster::type24Bit, scaled(image.width()), scaled(image.height())) ||
      !small.RescaleImage(image))
    return false;
  image = std::move(small);
  return true;
}

// Applies the Orientation (Exif 2.2, 4.6.4 A).
bool turn(PRaster& image, int64_t orientation) {
  if (orientation < 2 || orientation > 8) return true;
  const bool onItsSide = orientation >= 5;
  // Whether row 0, and column 0, is at the visible bottom or right.
  const bool rowsBackwards =
      orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
  const bool columnsBackwards =
      orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
  const int width = static_cast<int>(image.width()), height = static_cast<int>(image.height());
  PRaster turned;
  if (!turned.CreateImage(PRaster::type24Bit, onItsSide ? image.height() : image.width(),
                          onItsSide ? image.width() : image.height()))
    return false;
  for (int y = 0; y < height; ++y) {
    const int alongRows = rowsBackwards ? height - 1 - y : y;
    for (int x = 0; x < width; ++x) {
      const int alongColumns = columnsBackwards ? width - 1 - x : x;
      turned.SetPixel(onItsSide ? alongRows : alongColumns, onItsSide ? alongColumns : alongRows,
                      image.GetPixel(x, y));
    }
  }
  image = std::move(turned);
  return true;
}

// Out of memory ends the call: the codec cannot handle exceptions.
int append(void* text, const void* bytes, size_t count) noexcept {
  try {
    static_cast<std::string*>(text)->append(static_cast<const char*>(bytes), count);
    return 1;
  } catch (const std::bad_alloc&) {
    return 0;
  }
}

std::string jpegBytes(PRaster& image) {
  tagLmmInfo memory;
  image.GetLmmInfo(memory);
  std::string bytes;
  if (!AllSendDIBImg("preview.jpg", &memory, image.GetLmmOffset(), nullptr, append, &bytes))
    return "";
  return bytes;
}

}  // namespace

PicturePreview makePreview(const std::string& path, int64_t orientation) {
  PRaster image;
  {
    const EndingDelay delay;
    OpenExifFile(path.c_str(), nullptr, &image);
  }
  if (PRaster whole; image.IsEmpty() || image.lostRows() != 0) {
    if (exifkeep::loadPicture(path.c_str(), whole) && (image.IsEmpty() || whole.lostRows() == 0))
      image = std::move(whole);
  }
  const bool isDamaged = image.lostRows() != 0;
  // Palettes and single bits cannot be averaged.
  if (!image.ConvertTo24bit() || !shrink(image) || !turn(image, orientation)) return {};
  return {jpegBytes(image), image.width(), image.height(), isDamaged};
}

}  // namespace program

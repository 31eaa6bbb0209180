// The codec writes files only, so the preview goes through the temporary folder.
#include "picture_preview.h"

#include <exifkeep/exifkeep.h>
#include <pxcodec32.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

#include "image_files.h"
#include "system.h"

namespace program {
namespace {

// Twice the size at which pages show it, for screens of fine resolution.
constexpr unsigned longestSide = 320;

// A file in a new folder of its own below the temporary one.
class TemporaryFile {
 public:
  explicit TemporaryFile(const char* name) {
    char directory[4096];
    const DWORD length = GetTempPathA(sizeof directory, directory);
    if (length == 0 || length >= sizeof directory) return;
    std::random_device random;
    folder_ = directory + ("exifkeep-" + std::to_string(random()));
    if (CreateDirectoryA(folder_.c_str(), nullptr)) path_ = folder_ + "/" + name;
  }
  ~TemporaryFile() {
    if (path_.empty()) return;
    DeleteFileA(path_.c_str());
    RemoveDirectoryA(folder_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // Empty when the folder could not be made: the name alone would be a file of the user's.
  const std::string& path() const { return path_; }

 private:
  const EndingDelay delay_;  // ends after the file has gone
  std::string folder_;
  std::string path_;
};

bool shrink(PRaster& image) {
  const unsigned longer = std::max(image.width(), image.height());
  if (longer <= longestSide) return true;
  const auto scaled = [longer](unsigned side) {
    return std::max(1u, static_cast<unsigned>(uint64_t{side} * longestSide / longer));
  };
  PRaster small;
  if (!small.CreateImage(PRaster::type24Bit, scaled(image.width()), scaled(image.height())) ||
      !small.RescaleImage(image))
    return false;
  image = std::move(small);
  return true;
}

// Moves the pixels to where they are to be seen (Exif 2.2, 4.6.4 A, Orientation).
bool turn(PRaster& image, std::int64_t orientation) {
  if (orientation < 2 || orientation > 8) return true;
  const bool onItsSide = orientation >= 5;
  // Row 0 is seen at the bottom or the right, and column 0 is.
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

std::string jpegBytes(PRaster& image) {
  const TemporaryFile file("preview.jpg");
  if (file.path().empty()) return "";
  tagLmmInfo memory;
  image.GetLmmInfo(memory);
  if (!AllSaveDIBImg(file.path().c_str(), &memory, image.GetLmmOffset(), nullptr)) return "";
  std::ifstream stream(file.path(), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

PicturePreview makePreview(const std::string& path, std::int64_t orientation) {
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

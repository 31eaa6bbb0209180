// The codec can only write files, so the preview is written to the temporary folder.
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

// Twice the size shown on the page, for screens of high resolution.
constexpr unsigned maxSide = 320;

// A file in a new folder in the temporary folder.
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

  // Empty if the folder could not be created; the name alone could be one of the user's files.
  const std::string& path() const { return path_; }

 private:
  const EndingDelay delay_;  // destroyed after the file is deleted
  std::string folder_;
  std::string path_;
};

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
bool turn(PRaster& image, std::int64_t orientation) {
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

// The codec writes files only, so the preview takes the way through the thread's temporary
// directory.
#include "picture_preview.h"

#include <exifkeep/exifkeep.h>
#include <pxcodec32.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "image_files.h"

namespace program {
namespace {

// Twice the size at which pages show it, for screens of fine resolution.
constexpr unsigned longestSide = 320;

class TemporaryFile {
 public:
  explicit TemporaryFile(const char* name) {
    char directory[MAX_PATH] = "";
    GetTempPathA(sizeof directory, directory);
    path_ = std::string(directory) + name;
  }
  ~TemporaryFile() { DeleteFileA(path_.c_str()); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const char* path() const { return path_.c_str(); }

 private:
  std::string path_;
};

bool shrink(PRaster& image) {
  const unsigned longer = std::max(image.width(), image.height());
  if (longer <= longestSide) return true;
  const auto scaled = [longer](unsigned side) {
    return std::max(1u, static_cast<unsigned>(std::uint64_t{side} * longestSide / longer));
  };
  PRaster small;
  // Palettes and single bits cannot be averaged.
  if (!image.ConvertTo24bit() ||
      !small.CreateImage(PRaster::type24Bit, scaled(image.width()), scaled(image.height())) ||
      !small.RescaleImage(image)) {
    return false;
  }
  image = std::move(small);
  return true;
}

std::string jpegBytes(PRaster& image) {
  const TemporaryFile file("preview.jpg");
  tagLmmInfo memory;
  image.GetLmmInfo(memory);
  if (!AllSaveDIBImg(file.path(), &memory, image.GetLmmOffset(), nullptr)) return "";
  std::ifstream stream(file.path(), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

PicturePreview makePreview(const std::string& path) {
  PRaster image;
  OpenExifFile(path.c_str(), nullptr, &image);
  if (image.IsEmpty() && !decodeImage(path, image)) return {};
  if (!shrink(image)) return {};
  return {jpegBytes(image), image.width(), image.height()};
}

}  // namespace program

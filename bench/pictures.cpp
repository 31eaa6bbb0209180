// SPDX-License-Identifier: MIT
#include "pictures.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <utility>

#include <unistd.h>

namespace fs = std::filesystem;

namespace bench {

namespace {

class WorkFolder {
 public:
  WorkFolder() : path_(fs::temp_directory_path() / ("exifkeep-bench-" + std::to_string(getpid()))) {
    fs::create_directories(path_);
  }
  ~WorkFolder() { fs::remove_all(path_); }
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

fs::path sampleFolder() {
  if (const char* named = std::getenv("EXIFKEEP_SAMPLES")) return named;
  return fs::path(EXIFKEEP_SOURCE_DIR) / "../shared/samples";
}

std::vector<std::string> findCameraPictures() {
  std::vector<std::string> found;
  if (!fs::is_directory(sampleFolder())) return found;
  for (const auto& entry : fs::recursive_directory_iterator(sampleFolder()))
    if (IsExifFile(entry.path().c_str())) found.push_back(entry.path());
  std::sort(found.begin(), found.end());
  return found;
}

// Smooth shading with noise, the same in every run.
void paint(PRaster& picture) {
  unsigned noise = 1;
  for (unsigned y = 0; y < picture.height(); ++y) {
    BYTE* pixel = picture.row(y).data();
    for (unsigned x = 0; x < picture.width(); ++x, pixel += 3) {
      noise = noise * 1664525 + 1013904223;
      const unsigned grain = noise >> 28;
      pixel[0] = static_cast<BYTE>((x / 16 + y / 24 + grain) & 0xFF);
      pixel[1] = static_cast<BYTE>(((x ^ y) / 32 * 8 + grain) & 0xFF);
      pixel[2] = static_cast<BYTE>((x / 8 + 2 * (y / 40) + grain) & 0xFF);
    }
  }
}

}  // namespace

const std::vector<std::string>& cameraPictures() {
  static const std::vector<std::string> pictures = findCameraPictures();
  return pictures;
}

std::string workFile(const std::string& name) {
  static const WorkFolder folder;
  return folder.path() / name;
}

const PRaster& photograph(unsigned width, unsigned height) {
  static std::map<std::pair<unsigned, unsigned>, PRaster> made;
  PRaster& picture = made[{width, height}];
  if (picture.IsEmpty()) {
    if (!picture.CreateImage(PRaster::type24Bit, width, height, 0, 0, 2835, 2835))
      throw std::runtime_error("no memory for a picture");
    paint(picture);
  }
  return picture;
}

// Attaching a recording makes any picture an Exif file.
std::string exifPicture(unsigned width, unsigned height, const std::string& extension) {
  std::string path =
      workFile(std::to_string(width) + "x" + std::to_string(height) + "." + extension);
  if (fs::exists(path)) return path;
  auto& picture = const_cast<PRaster&>(photograph(width, height));
  if (!AddAudio(path.data(), "exifkeep bench", &picture, nullptr))
    throw std::runtime_error("cannot write " + path);
  return path;
}

}  // namespace bench

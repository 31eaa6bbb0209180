// SPDX-License-Identifier: MIT
#include "input.h"

#include <exifkeep/exifkeep.h>
#include <stdlib.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "imageio/image_codec_bridge.h"
#include "system/path.h"

namespace exifkeep::fuzz {

namespace fs = std::filesystem;

namespace {

constexpr size_t maxFileSize = 64 << 10;

int answerSilently(void*, const char*, UINT) {
  return IDOK;
}

class Folder {
 public:
  Folder() {
    std::string name = parent() + "/exifkeep-fuzz-XXXXXX";
    require(mkdtemp(name.data()) != nullptr, "no scratch folder");
    path_ = name;
    setenv("TMPDIR", name.c_str(), 1);
    AfxSetMessageBoxHandler(answerSilently, nullptr);
  }
  ~Folder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  const fs::path& path() const { return path_; }

 private:
  static std::string parent() {
    if (fs::is_directory("/dev/shm")) return "/dev/shm";
    const char* chosen = std::getenv("TMPDIR");
    return chosen ? chosen : "/tmp";
  }
  fs::path path_;
};

}  // namespace

std::string scratchPath(const std::string& name) {
  static const Folder folder;
  return folder.path() / name;
}

void writeFile(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

PictureInput::PictureInput(const uint8_t* data, size_t size) {
  if (size > 0) {
    choice_ = data[0] >> 1;
    isTiff_ = data[0] & 1;
    bytes_.assign(reinterpret_cast<const char*>(data) + 1, std::min(size - 1, maxFileSize));
  }
  path_ = scratchPath(isTiff_ ? "x.tif" : "x.jpg");
  writeFile(path_, bytes_);
}

PRaster makePicture(unsigned width, unsigned height) {
  PRaster picture;
  require(picture.CreateImage(PRaster::type24Bit, width, height, 0, 0, 2835, 2835), "no picture");
  for (unsigned y = 0; y < height; ++y)
    for (unsigned i = 0; i < width * 3; ++i) picture.row(y)[i] = static_cast<BYTE>(i * 5 + y * 9);
  return picture;
}

void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "FAULT: %s\n", what);
  std::abort();
}

void requireSaved(const std::string& path, unsigned width, unsigned height) {
  if (isTiffName(path) && IsExifFile(path.c_str())) return;
  const auto image = ImageCodecBridge().loadImageFile(path.c_str());
  require(image && image->width() == width && image->height() == height,
          "a saved file that is not the picture");
}

}  // namespace exifkeep::fuzz

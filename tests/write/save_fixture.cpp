// SPDX-License-Identifier: MIT
#include "write/save_fixture.h"

#include <pxcodec32.h>
#include <unistd.h>

#include <cstring>

#include "full_picture.h"
#include "system/temporary_picture.h"

// The linker's option --wrap redirects the library's calls to these functions.
extern "C" int __real_AllSendDIBImg(const char* path, const tagLmmInfo* image, unsigned offset,
                                    CodecProgress progress, CodecReceive receive, void* receiver);
extern "C" int __wrap_AllSendDIBImg(const char* path, const tagLmmInfo* image, unsigned offset,
                                    CodecProgress progress, CodecReceive receive, void* receiver) {
  using exifkeep::test::codecFiles;
  const bool isThumbnail = std::strstr(path, exifkeep::temporaryJpegName) != nullptr;
  const auto& file = isThumbnail ? codecFiles.thumbnail : codecFiles.picture;
  if (!file) return __real_AllSendDIBImg(path, image, offset, progress, receive, receiver);
  constexpr size_t step = 1 << 20;
  for (size_t at = 0; at < file->size(); at += step)
    if (!receive(receiver, file->data() + at, std::min(step, file->size() - at))) return 0;
  return !file->empty();
}

namespace exifkeep::test {

CodecFiles codecFiles;

PRaster picture(unsigned width, unsigned height, int bits) {
  PRaster image;
  image.CreateImage(PRaster::GetImageType(bits, 0), width, height, 0, 0, 2815, 5886);
  constexpr unsigned colours[] = {0x0000FF, 0x00FF00, 0xFF0000, 0xFFFFFF};
  for (unsigned y = 0; y < height; ++y)
    for (unsigned x = 0; x < width; ++x) {
      const unsigned quarter = 2 * y / height * 2 + 2 * x / width;
      image.SetPixel(int(x), int(y), bits == 24 ? colours[quarter] : 70 + 50 * quarter);
    }
  return image;
}

ExifMetadata fullRecords() {
  static const std::unique_ptr<Reading> full = [] {
    const std::string name = "full-" + std::to_string(getpid()) + ".jpg";
    const std::string path = (std::filesystem::temp_directory_path() / name).string();
    writeFile(path, tiffBytes(fullPicture(), Order::ii));
    auto reading = std::make_unique<Reading>(path);
    std::filesystem::remove(path);
    return reading;
  }();
  return *full;
}

std::string segmentOf(const std::string& file) {
  if (file.size() < 6 || file.compare(0, 4, "\xFF\xD8\xFF\xE1") != 0) return {};
  return file.substr(2, size_t{2} + uint8_t(file[4]) * 256 + uint8_t(file[5]));
}

}  // namespace exifkeep::test

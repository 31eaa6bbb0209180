// What the fuzz targets share: the picture file that an input stands for, the folder it lies in, a
// small picture to save, and the check that ends a run. An input's first byte is a choice, its
// lowest bit the kind of file; the other bytes are the file.
#pragma once

#include <praster.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace exifkeep::fuzz {

// A path in this process's own folder, which is in memory where the system allows it and is also
// the library's folder for temporary files. It is removed when the process ends.
std::string scratchPath(const std::string& name);

void writeFile(const std::string& path, const std::string& bytes);
std::string readFile(const std::string& path);

// The input, written to x.jpg or x.tif. At most 64 KiB of it: larger files only take longer.
class PictureInput {
 public:
  PictureInput(const uint8_t* data, size_t size);

  unsigned choice() const { return choice_; }
  const std::string& bytes() const { return bytes_; }
  const std::string& path() const { return path_; }
  bool isTiff() const { return isTiff_; }

 private:
  unsigned choice_ = 0;
  bool isTiff_ = false;
  std::string bytes_;
  std::string path_;
};

// 24 bits, with a gradient.
PRaster makePicture(unsigned width, unsigned height);

// Ends the process with a message, which is how a target reports a fault that no sanitizer sees.
void require(bool condition, const char* what);

// Requires that the file is a picture of this size. An Exif TIFF file need not open: a source that
// names its samples but not their bits, say, is saved without them, which is intended.
void requireSaved(const std::string& path, unsigned width, unsigned height);

}  // namespace exifkeep::fuzz

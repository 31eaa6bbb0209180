// SPDX-License-Identifier: MIT
// Shared by the fuzz targets: the picture file made from an input, its folder, a small picture to
// save, and the check that ends a run. The first byte of an input has choices, with the kind of
// file in the lowest bit; the other bytes are the file.
#pragma once

#include <praster.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace exifkeep::fuzz {

// A path in this process's own folder, which is in memory if possible and also the library's folder
// for temporary files. It is deleted when the process ends.
std::string scratchPath(const std::string& name);

void writeFile(const std::string& path, const std::string& bytes);
std::string readFile(const std::string& path);

// Writes the input, but at most 64 KiB, to x.jpg or x.tif. Larger files would only take longer.
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

// Ends the process with a message, to report a fault that no sanitizer detects.
void require(bool condition, const char* what);

// Requires that the file is a picture of this size. An Exif TIFF file may be undecodable. Intended:
// for example, if the source has a number of samples but not their bits, so has the saved file.
void requireSaved(const std::string& path, unsigned width, unsigned height);

}  // namespace exifkeep::fuzz

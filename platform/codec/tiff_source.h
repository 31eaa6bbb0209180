// SPDX-License-Identifier: MIT
// Presents a TIFF file to the TIFF library with only those entries in the first directory that are
// needed for decoding, each once and limited in size, and no other directory. The library would
// load all entries, whatever their size, and compare each with every other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "picture_file.h"

namespace exifkeep {

class TiffSource {
 public:
  // REQUIRES: `file` outlives this object.
  explicit TiffSource(PictureReading& file);

  // Whether the file has its whole first directory.
  bool hasDirectory() const { return !directory_.empty(); }

  uint64_t size() const { return file_.size(); }
  uint64_t position() const { return file_.position(); }
  void moveTo(uint64_t position) { file_.moveTo(position); }
  size_t read(void* bytes, size_t count);

 private:
  void readDirectory();

  PictureReading& file_;
  uint64_t directoryAt_ = 0;
  std::vector<uint8_t> directory_;  // replaces the file's bytes there, and is not longer
};

}  // namespace exifkeep

// A TIFF file as the TIFF library gets to see it: in its first directory only the entries that
// decoding needs, each once and none larger than it can sensibly be, and no further directory. The
// library loads every entry that it finds, of any size, and compares each with each.
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

  // Whether the file holds its first directory whole.
  bool hasDirectory() const noexcept { return !directory_.empty(); }

  uint64_t size() const noexcept { return file_.size(); }
  uint64_t position() const noexcept { return file_.position(); }
  void moveTo(uint64_t position) noexcept { file_.moveTo(position); }
  size_t read(void* bytes, size_t count) noexcept;

 private:
  void readDirectory();

  PictureReading& file_;
  uint64_t directoryAt_ = 0;
  std::vector<uint8_t> directory_;  // what is read there instead of the file's bytes; not longer
};

}  // namespace exifkeep

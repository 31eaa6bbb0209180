// New files under names that no other file has.
#pragma once

#include <memory>
#include <string>

#include "open_file.h"

namespace exifkeep {

struct UniqueFile {
  std::unique_ptr<OpenFile> file;  // open for reading and writing; null when none could be made
  std::string path;                // head, four hexadecimal digits, ".tmp"
  UINT number = 0;                 // what the digits say; never 0
};

// Creates (O_EXCL) a file whose path begins with `head`. May throw std::bad_alloc.
UniqueFile createUniqueFile(const std::string& head, mode_t mode);

}  // namespace exifkeep

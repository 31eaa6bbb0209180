// SPDX-License-Identifier: MIT
// Creates files with unused names.
#pragma once

#include <memory>
#include <string>

#include "open_file.h"

namespace exifkeep {

struct UniqueFile {
  std::unique_ptr<OpenFile> file;  // open for reading and writing; null if none could be created
  std::string path;                // head, four hexadecimal digits, ".tmp"
  UINT number = 0;                 // the number in the name, not 0
};

// Creates (O_EXCL) a file whose path begins with `head`. May throw std::bad_alloc.
UniqueFile createUniqueFile(const std::string& head, mode_t mode);

}  // namespace exifkeep

// Why a file is not answered. The library says 0 both for a file without Exif data and for one that
// cannot be opened; the program's exit status tells them apart.
#pragma once

#include <string>

#include "exit_status.h"

namespace program {

struct FileRefusal {
  ExitStatus status;  // notExif or failed
  std::string reason;
};

// Says what stands against reading `path`: failed when it is missing, no regular file or not
// readable, else notExif.
FileRefusal explainRefusal(const std::string& path);

// True when `path` can be opened for reading; else says why not on standard error.
bool canBeOpened(const std::string& path);

}  // namespace program

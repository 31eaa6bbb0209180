// SPDX-License-Identifier: MIT
#include "system/temporary_picture.h"

#include <windows.h>

#include <initializer_list>

#include "system/path.h"
#include "system/random_name.h"

namespace exifkeep {

TemporaryPicture::TemporaryPicture(std::string_view fileName) {
  char directory[256];
  const DWORD length = GetTempPathA(sizeof directory, directory);
  if (length == 0 || length >= sizeof directory) return;
  folder_ = directory + randomName("exifkeep-");
  std::string path = folder_ + pathSeparator;
  path += fileName;
  if (CreateDirectoryA(folder_.c_str(), nullptr)) path_.swap(path);
}

TemporaryPicture::~TemporaryPicture() {
  if (path_.empty() || isKept_) return;
  // A virus scanner or a network file system may refuse this once and allow it a moment later.
  if (!DeleteFileA(path_.c_str())) DeleteFileA(path_.c_str());
  RemoveDirectoryA(folder_.c_str());
}

// Moving a file to its own name changes nothing but waits until the name is on disk.
void TemporaryPicture::settle() const {
  for (const char* name : {path_.c_str(), folder_.c_str()})
    MoveFileExA(name, name, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

}  // namespace exifkeep

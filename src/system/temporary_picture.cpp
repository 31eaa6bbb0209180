#include "system/temporary_picture.h"

#include <windows.h>

#include "system/path.h"

namespace exifkeep {

TemporaryPicture::TemporaryPicture(const char* fileName) {
  char directory[256];
  const DWORD length = GetTempPathA(sizeof directory, directory);
  if (length == 0 || length >= sizeof directory) return;
  path_ = directory;
  if (path_.back() != pathSeparator) path_ += pathSeparator;
  path_ += fileName;
  DeleteFileA(path_.c_str());
}

TemporaryPicture::~TemporaryPicture() {
  if (!path_.empty()) DeleteFileA(path_.c_str());
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
#include "audio/copy_recording.h"

#include <mbstring.h>
#include <shellapi.h>

#include <algorithm>

#include "audio/sound_names.h"
#include "system/path.h"

namespace exifkeep {

namespace {

// A list of one path as the shell expects it: the path's NUL is followed by that of the list.
class ShellPath {
 public:
  explicit ShellPath(const std::string& path) : fits_(path.size() + 2 <= sizeof list_) {
    if (fits_) std::copy(path.begin(), path.end(), list_);
  }
  bool fits() const { return fits_; }
  const char* list() const { return list_; }

 private:
  char list_[MAX_PATH] = {};
  bool fits_;
};

bool exists(const std::string& path) {
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// Used if all short names are taken. To find an unused name the system creates a file; it is
// deleted at once, as the recording's extension differs.
std::string uniqueDestination(const std::string& directory) {
  char path[MAX_PATH];
  if (!GetTempFileNameA(directory.empty() ? "." : directory.c_str(), "ADO", 0, path)) return "";
  DeleteFileA(path);
  return withExtension(path, "wav");
}

// Compares the text, ignoring the case of ASCII letters. Intended: the shell notices other
// spellings of the same file.
bool isSameText(const std::string& left, const std::string& right) {
  const auto bytes = [](const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.c_str());
  };
  return _mbsicmp(bytes(left), bytes(right)) == 0;
}

}  // namespace

std::string recordingDestination(const std::string& picturePath, const std::string& soundPath) {
  const std::string directory(directoryOf(picturePath));
  const std::string_view name = fileNameOf(soundPath);
  if (name.size() <= maxSoundNameLength) return directory + std::string(name);
  for (int n = 1; n <= lastShortName; ++n) {
    const std::string candidate = directory + shortSoundName(name, n);
    if (!exists(candidate)) return candidate;
  }
  return uniqueDestination(directory);
}

CopyResult copyRecording(const std::string& soundPath, const std::string& destination, HWND owner) {
  if (isSameText(soundPath, destination)) return CopyResult::inPlace;
  const ShellPath from(soundPath), to(destination);
  if (!from.fits() || !to.fits()) return CopyResult::failed;
  SHFILEOPSTRUCTA operation = {};
  operation.hwnd = owner;
  operation.wFunc = FO_COPY;
  operation.pFrom = from.list();
  operation.pTo = to.list();
  operation.fFlags = FOF_ALLOWUNDO;
  const int error = SHFileOperationA(&operation);
  if (operation.fAnyOperationsAborted) return CopyResult::cancelled;
  return error == 0 ? CopyResult::inPlace : CopyResult::failed;
}

}  // namespace exifkeep

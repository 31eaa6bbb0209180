#include "system/pending_file.h"

#include <windows.h>

#include <cstdio>
#include <string_view>

#include "system/disk_file.h"
#include "system/path.h"

namespace exifkeep {

namespace {

// The file's own name behind all links; empty when it cannot be opened for writing.
std::string finalPath(const char* path) {
  const HANDLE file =
      CreateFileA(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {};
  char name[4096];
  const DWORD length = GetFinalPathNameByHandleA(file, name, sizeof name, FILE_NAME_NORMALIZED);
  CloseHandle(file);
  return std::string(name, length < sizeof name ? length : 0);
}

bool createNew(const char* path, DWORD attributes) {
  const HANDLE file = CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  if (CloseHandle(file)) return true;
  DeleteFileA(path);
  return false;
}

// The extension of the file name, its '.' included; empty when it has none.
std::string_view dottedExtension(std::string_view path) {
  return hasExtension(path) ? path.substr(path.rfind('.')) : std::string_view();
}

bool flush(const char* path) {
  DiskFile file = DiskFile::openForWriting(path);
  return file.flush() && file.close();
}

}  // namespace

PendingFile::PendingFile(const char* destination) : target_(destination) {
  chooseTarget();
  if (path_.empty() && !reserve(dottedExtension(destination))) path_ = target_;
}

PendingFile::~PendingFile() {
  // In place the writers themselves decide: what failed before it touched the file leaves it alone.
  if (!isCommitted_ && !isInPlace()) DeleteFileA(path());
}

// Sets path_ at once when the destination itself has to be written.
void PendingFile::chooseTarget() {
  const DWORD attributes = GetFileAttributesA(target_.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return;
  // A file that may not be written, a directory, a device, a link that leads nowhere: writing it
  // gives the answer that the user is used to.
  std::string name = finalPath(target_.c_str());
  if (name.empty()) {
    path_ = target_;
    return;
  }
  target_ = std::move(name);
  replaces_ = true;
}

// Creates an empty file of a new name beside the target. What replaces a file is private until it
// gets that file's permissions.
bool PendingFile::reserve(std::string_view extension) {
  const std::string directory(directoryOf(target_));
  constexpr int attempts = 1000;
  for (int i = 0; i < attempts; ++i) {
    char unique[24];
    std::snprintf(unique, sizeof unique, "~exifkeep%03d", i);
    path_ = directory + unique;
    path_ += extension;
    if (createNew(path(), replaces_ ? FILE_ATTRIBUTE_TEMPORARY : FILE_ATTRIBUTE_NORMAL))
      return true;
    // Only a name that is taken is worth another try.
    if (GetFileAttributesA(path()) == INVALID_FILE_ATTRIBUTES) return false;
  }
  return false;
}

bool PendingFile::commit() {
  if (isInPlace()) return isCommitted_ = true;
  if (!flush(path())) return false;
  isCommitted_ = replaces_ ? ReplaceFileA(target_.c_str(), path(), nullptr,
                                          REPLACEFILE_WRITE_THROUGH, nullptr, nullptr)
                           : MoveFileExA(path(), target_.c_str(),
                                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
  return isCommitted_;
}

}  // namespace exifkeep

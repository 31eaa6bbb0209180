// SPDX-License-Identifier: MIT
// Calls on the names of files and folders. Renaming is atomic (rename(2)); with
// MOVEFILE_WRITE_THROUGH the new name is on disk when the call returns.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

#include "failure_switch.h"
#include "last_error.h"
#include "open_file.h"

using exifkeep::failed;
using exifkeep::failsNow;
using exifkeep::OpenFile;
using exifkeep::PlatformCall;

namespace {

// Renames without replacing. Where the file system cannot do so atomically, checks first.
bool renameToNew(LPCSTR from, LPCSTR to) {
  if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  struct stat status;
  return lstat(to, &status) != 0 && errno == ENOENT && rename(from, to) == 0;
}

// Failure is not reported: the file already has its new name, and some file systems cannot sync a
// directory.
void syncDirectoryOf(std::string_view path) {
  if (failsNow(PlatformCall::sync)) return;
  const size_t slash = path.rfind('/');
  const std::string directory(slash == path.npos ? "." : path.substr(0, slash + 1));
  const int descriptor = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

// Like Windows, returns the length stored or else the size of buffer needed.
DWORD store(const char* text, LPSTR buffer, DWORD size) {
  const auto length = static_cast<DWORD>(std::strlen(text));
  if (length >= size) return length + 1;
  std::memcpy(buffer, text, length + 1);
  return length;
}

bool isWritableFolder(const char* path) {
  struct stat status;
  return stat(path, &status) == 0 && S_ISDIR(status.st_mode) && access(path, W_OK | X_OK) == 0;
}

}  // namespace

BOOL DeleteFileA(LPCSTR path) {
  return (!failsNow(PlatformCall::remove) && unlink(path) == 0) || failed();
}

BOOL CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES) {
  return (!failsNow(PlatformCall::temporaryDirectory) && mkdir(path, 0700) == 0) || failed();
}

BOOL RemoveDirectoryA(LPCSTR path) {
  return (!failsNow(PlatformCall::remove) && rmdir(path) == 0) || failed();
}

BOOL MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags) {
  if (failsNow(PlatformCall::rename)) return failed();
  const bool replace = (flags & MOVEFILE_REPLACE_EXISTING) != 0;
  if (!(replace ? rename(from, to) == 0 : renameToNew(from, to))) return failed();
  if ((flags & MOVEFILE_WRITE_THROUGH) == 0) return TRUE;
  try {
    syncDirectoryOf(to);
  } catch (const std::bad_alloc&) {
    // Ignored, like any failure to sync.
  }
  return TRUE;
}

BOOL ReplaceFileA(LPCSTR replaced, LPCSTR replacement, LPCSTR, DWORD flags, LPVOID, LPVOID) {
  const DWORD through = (flags & REPLACEFILE_WRITE_THROUGH) != 0 ? MOVEFILE_WRITE_THROUGH : 0;
  return MoveFileExA(replacement, replaced, MOVEFILE_REPLACE_EXISTING | through);
}

// Resolves the path by which the file was opened and checks that it still leads to that file.
DWORD GetFinalPathNameByHandleA(HANDLE file, LPSTR buffer, DWORD size, DWORD) {
  const auto* opened = static_cast<const OpenFile*>(file);
  char path[PATH_MAX];
  struct stat named, own;
  errno = EBADF;
  if (file == INVALID_HANDLE_VALUE || !opened->path() || !realpath(opened->path(), path) ||
      stat(path, &named) != 0 || fstat(opened->descriptor(), &own) != 0)
    return failed();
  errno = ENOENT;
  if (named.st_dev != own.st_dev || named.st_ino != own.st_ino) return failed();
  return store(path, buffer, size);
}

// A relative TMPDIR would change with the working directory. With a long one, paths would not fit
// into the buffers of 256 bytes that callers use.
DWORD GetTempPathA(DWORD size, LPSTR buffer) {
  constexpr size_t maxLength = 200;
  if (failsNow(PlatformCall::temporaryDirectory)) return failed();
  const char* chosen = std::getenv("TMPDIR");
  const bool isGood =
      chosen && chosen[0] == '/' && std::strlen(chosen) < maxLength && isWritableFolder(chosen);
  char path[maxLength + 1];
  std::strcpy(path, isGood ? chosen : "/tmp");
  return store(std::strcat(path, "/"), buffer, size);
}

// Does not follow links: the name of a dangling link is taken too.
DWORD GetFileAttributesA(LPCSTR path) {
  struct stat status;
  if (lstat(path, &status) != 0) {
    failed();
    return INVALID_FILE_ATTRIBUTES;
  }
  return S_ISDIR(status.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
}

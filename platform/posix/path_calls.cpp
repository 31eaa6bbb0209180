// The kernel's calls on file names. Renaming is atomic (rename(2)); with MOVEFILE_WRITE_THROUGH the
// new name is on disk when the call returns.
#include <failure_switch.h>
#include <fcntl.h>
#include <open_file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

using exifkeep::failsNow;
using exifkeep::OpenFile;
using exifkeep::PlatformCall;

namespace {

// Without replacing. File systems that cannot do so in one step get a check before.
bool renameToNew(LPCSTR from, LPCSTR to) {
  if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  struct stat status;
  return lstat(to, &status) != 0 && errno == ENOENT && rename(from, to) == 0;
}

// A failure here is not reported: the file already bears its new name, and not every file system
// can sync a directory.
void syncDirectoryOf(std::string_view path) {
  if (failsNow(PlatformCall::sync)) return;
  const std::size_t slash = path.rfind('/');
  const std::string directory(slash == path.npos ? "." : path.substr(0, slash + 1));
  const int descriptor = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

}  // namespace

BOOL DeleteFileA(LPCSTR path) {
  return !failsNow(PlatformCall::remove) && unlink(path) == 0;
}

BOOL MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags) {
  if (failsNow(PlatformCall::rename)) return FALSE;
  const bool replace = (flags & MOVEFILE_REPLACE_EXISTING) != 0;
  if (!(replace ? rename(from, to) == 0 : renameToNew(from, to))) return FALSE;
  if ((flags & MOVEFILE_WRITE_THROUGH) == 0) return TRUE;
  try {
    syncDirectoryOf(to);
  } catch (const std::bad_alloc&) {
    // As any failure to sync.
  }
  return TRUE;
}

BOOL ReplaceFileA(LPCSTR replaced, LPCSTR replacement, LPCSTR, DWORD flags, LPVOID, LPVOID) {
  struct stat status;
  if (stat(replaced, &status) != 0) return FALSE;
  // Only root may give files away; for anyone else the owner is the same already, mostly. The owner
  // comes first, since a change of owner may clear mode bits.
  [[maybe_unused]] const int ignored = chown(replacement, status.st_uid, status.st_gid);
  if (chmod(replacement, status.st_mode & 0777) != 0) return FALSE;
  const DWORD through = (flags & REPLACEFILE_WRITE_THROUGH) != 0 ? MOVEFILE_WRITE_THROUGH : 0;
  return MoveFileExA(replacement, replaced, MOVEFILE_REPLACE_EXISTING | through);
}

DWORD GetFinalPathNameByHandleA(HANDLE file, LPSTR buffer, DWORD size, DWORD) {
  if (file == INVALID_HANDLE_VALUE) return 0;
  char link[32];
  std::snprintf(link, sizeof link, "/proc/self/fd/%d",
                static_cast<const OpenFile*>(file)->descriptor());
  char path[PATH_MAX];
  const ssize_t length = readlink(link, path, sizeof path);
  // A path that long, and one that no longer leads to the file, are not known.
  struct stat named, opened;
  if (length <= 0 || length >= PATH_MAX) return 0;
  path[length] = '\0';
  if (stat(path, &named) != 0 || stat(link, &opened) != 0) return 0;
  if (named.st_dev != opened.st_dev || named.st_ino != opened.st_ino) return 0;
  const auto needed = static_cast<DWORD>(length) + 1;
  if (size < needed) return needed;
  std::memcpy(buffer, path, needed);
  return needed - 1;
}

// The attributes of a link are its own, so a link that leads nowhere still takes its name.
DWORD GetFileAttributesA(LPCSTR path) {
  struct stat status;
  if (lstat(path, &status) != 0) return INVALID_FILE_ATTRIBUTES;
  DWORD attributes = 0;
  if (S_ISLNK(status.st_mode)) {
    attributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    if (stat(path, &status) != 0) return attributes;
  }
  if (S_ISDIR(status.st_mode)) attributes |= FILE_ATTRIBUTE_DIRECTORY;
  if ((status.st_mode & 0222) == 0) attributes |= FILE_ATTRIBUTE_READONLY;
  return attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
}

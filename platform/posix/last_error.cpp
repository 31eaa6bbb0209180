// SPDX-License-Identifier: MIT
#include "last_error.h"

#include <cerrno>

namespace exifkeep {
namespace {

struct ErrorRow {
  int posix;
  DWORD windows;
};

// Opening a directory or a device without a driver counts as access denied.
constexpr ErrorRow errors[] = {
    {ENOENT, ERROR_FILE_NOT_FOUND},
    {ENOTDIR, ERROR_PATH_NOT_FOUND},
    {EACCES, ERROR_ACCESS_DENIED},
    {EPERM, ERROR_ACCESS_DENIED},
    {EISDIR, ERROR_ACCESS_DENIED},
    {ENXIO, ERROR_ACCESS_DENIED},
    {ENODEV, ERROR_ACCESS_DENIED},
    {EROFS, ERROR_WRITE_PROTECT},
    {EEXIST, ERROR_FILE_EXISTS},
    {ENAMETOOLONG, ERROR_FILENAME_EXCED_RANGE},
    {ELOOP, ERROR_CANT_RESOLVE_FILENAME},
    {EMFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ENFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {ENOSPC, ERROR_DISK_FULL},
    {EDQUOT, ERROR_DISK_FULL},
    {EFBIG, ERROR_DISK_FULL},
    {EIO, ERROR_IO_DEVICE},
    {EBUSY, ERROR_BUSY},
    {ETXTBSY, ERROR_SHARING_VIOLATION},
    {EXDEV, ERROR_NOT_SAME_DEVICE},
    {ENOTEMPTY, ERROR_DIR_NOT_EMPTY},
    {EBADF, ERROR_INVALID_HANDLE},
    {EINVAL, ERROR_INVALID_PARAMETER},
    {ENOSYS, ERROR_NOT_SUPPORTED},
    {EOPNOTSUPP, ERROR_NOT_SUPPORTED},
};

thread_local DWORD lastError = ERROR_SUCCESS;

}  // namespace

DWORD errorOf(int error) {
  for (const ErrorRow& row : errors)
    if (row.posix == error) return row.windows;
  return ERROR_GEN_FAILURE;
}

BOOL failed() {
  SetLastError(errorOf(errno));
  return FALSE;
}

}  // namespace exifkeep

DWORD GetLastError() {
  return exifkeep::lastError;
}

void SetLastError(DWORD error) {
  exifkeep::lastError = error;
}

// SPDX-License-Identifier: MIT
// The file calls, using OpenFile: a HANDLE is the address of one. Arguments without an equivalent
// in POSIX (sharing, attributes of new files) are accepted but not used.
#include <fcntl.h>
#include <unistd.h>
#include <windows.h>

#include <cerrno>
#include <new>

#include "failure_switch.h"
#include "file_rights.h"
#include "last_error.h"
#include "open_file.h"

using exifkeep::failed;
using exifkeep::failsNow;
using exifkeep::OpenFile;
using exifkeep::PlatformCall;

namespace {

OpenFile* fileOf(HANDLE handle) {
  errno = EBADF;
  return handle == INVALID_HANDLE_VALUE ? nullptr : static_cast<OpenFile*>(handle);
}

int accessFlags(DWORD access) {
  if ((access & GENERIC_WRITE) == 0) return O_RDONLY;
  return (access & GENERIC_READ) != 0 ? O_RDWR : O_WRONLY;
}

// -1 for an unsupported disposition.
int creationFlags(DWORD disposition) {
  switch (disposition) {
    case OPEN_EXISTING: return 0;
    case CREATE_ALWAYS: return O_CREAT | O_TRUNC;
    case CREATE_NEW: return O_CREAT | O_EXCL | O_NOFOLLOW;
  }
  return -1;
}

// A new file with a pattern is accessible only to its owner until it has the pattern's rights.
std::unique_ptr<OpenFile> createLike(const OpenFile& pattern, LPCSTR path, int flags) {
  std::unique_ptr<OpenFile> file = OpenFile::open(path, flags, 0600);
  try {
    if (file) exifkeep::copyRights(pattern.descriptor(), file->descriptor());
    return file;
  } catch (const std::bad_alloc&) {
    unlink(path);
    errno = ENOMEM;
    return nullptr;
  }
}

// The file of a transfer, moved to the transfer's position, if given; null on failure.
OpenFile* openedAt(HANDLE handle, LPOVERLAPPED place) {
  OpenFile* opened = fileOf(handle);
  if (!opened || !place) return opened;
  const int64_t position = int64_t{place->OffsetHigh} << 32 | place->Offset;
  return opened->moveTo(position) ? opened : nullptr;
}

void store(LPDWORD target, size_t value) {
  if (target) *target = static_cast<DWORD>(value);
}

}  // namespace

HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD, LPSECURITY_ATTRIBUTES, DWORD disposition,
                   DWORD, HANDLE pattern) {
  const int creation = creationFlags(disposition);
  if (creation < 0 || (access & (GENERIC_READ | GENERIC_WRITE)) == 0) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return INVALID_HANDLE_VALUE;
  }
  const int flags = accessFlags(access) | creation;
  std::unique_ptr<OpenFile> file =
      pattern && disposition == CREATE_NEW
          ? createLike(*static_cast<const OpenFile*>(pattern), path, flags)
          : OpenFile::open(path, flags, 0666);
  if (file) return file.release();
  failed();
  return INVALID_HANDLE_VALUE;
}

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD count, LPDWORD read, LPOVERLAPPED place) {
  size_t done = 0;
  OpenFile* opened = openedAt(file, place);
  const bool succeeded = opened && opened->read(buffer, count, done);
  store(read, done);
  return succeeded || failed();
}

BOOL WriteFile(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written, LPOVERLAPPED place) {
  size_t done = 0;
  OpenFile* opened = openedAt(file, place);
  const bool succeeded = opened && opened->write(bytes, count, done);
  store(written, done);
  return succeeded || failed();
}

BOOL GetFileSizeEx(HANDLE file, PLARGE_INTEGER size) {
  OpenFile* opened = fileOf(file);
  if (!opened || failsNow(PlatformCall::fileSize) || opened->size() < 0) return failed();
  size->QuadPart = opened->size();
  return TRUE;
}

BOOL SetFileInformationByHandle(HANDLE file, FILE_INFO_BY_HANDLE_CLASS what, LPVOID information,
                                DWORD size) {
  OpenFile* opened = fileOf(file);
  if (what != FileEndOfFileInfo || size != sizeof(FILE_END_OF_FILE_INFO))
    errno = EINVAL;
  else if (opened) {
    const auto* end = static_cast<const FILE_END_OF_FILE_INFO*>(information);
    if (opened->truncateTo(end->EndOfFile.QuadPart)) return TRUE;
  }
  return failed();
}

BOOL FlushFileBuffers(HANDLE file) {
  OpenFile* opened = fileOf(file);
  return (opened && opened->sync()) || failed();
}

BOOL CloseHandle(HANDLE file) {
  const std::unique_ptr<OpenFile> opened(fileOf(file));
  return (opened && opened->close()) || failed();
}

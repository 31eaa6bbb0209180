// The kernel's file calls over OpenFile: a HANDLE is the address of one. What POSIX has no word for
// (sharing, attributes of new files) is accepted and not used.
#include <failure_switch.h>
#include <fcntl.h>
#include <open_file.h>
#include <temporary_directory.h>
#include <unistd.h>
#include <windows.h>

#include <limits>

using exifkeep::failsNow;
using exifkeep::OpenFile;
using exifkeep::PlatformCall;

namespace {

OpenFile* fileOf(HANDLE handle) {
  return handle == INVALID_HANDLE_VALUE ? nullptr : static_cast<OpenFile*>(handle);
}

int accessFlags(DWORD access) {
  if ((access & GENERIC_WRITE) == 0) return O_RDONLY;
  return (access & GENERIC_READ) != 0 ? O_RDWR : O_WRONLY;
}

// In the temporary directory a new file takes the place of whatever bears its name; nobody else
// gets to read it, and no link is followed.
HANDLE createTemporary(LPCSTR path, int flags, DWORD disposition) {
  if (disposition == CREATE_ALWAYS) unlink(path);
  return OpenFile::open(path, flags | O_CREAT | O_EXCL | O_NOFOLLOW, 0600).release();
}

HANDLE openFile(LPCSTR path, int flags, DWORD disposition, mode_t mode) {
  if (disposition == OPEN_EXISTING) return OpenFile::open(path, flags, 0).release();
  if (disposition != CREATE_ALWAYS && disposition != CREATE_NEW) return nullptr;
  if (exifkeep::isTemporaryPath(path)) return createTemporary(path, flags, disposition);
  const int creation = O_CREAT | (disposition == CREATE_NEW ? O_EXCL : O_TRUNC);
  return OpenFile::open(path, flags | creation, mode).release();
}

// The file of a transfer, moved to the place that the transfer names, if any; null on failure.
OpenFile* openedAt(HANDLE handle, LPOVERLAPPED place) {
  OpenFile* opened = fileOf(handle);
  if (opened == nullptr || place == nullptr) return opened;
  const std::int64_t position = std::int64_t{place->OffsetHigh} << 32 | place->Offset;
  return opened->moveTo(position) ? opened : nullptr;
}

void store(LPDWORD target, std::size_t value) {
  if (target != nullptr) *target = static_cast<DWORD>(value);
}

}  // namespace

HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD, LPSECURITY_ATTRIBUTES, DWORD disposition,
                   DWORD attributes, HANDLE) {
  if ((access & (GENERIC_READ | GENERIC_WRITE)) == 0) return INVALID_HANDLE_VALUE;
  const mode_t mode = (attributes & FILE_ATTRIBUTE_TEMPORARY) != 0 ? 0600 : 0666;
  const HANDLE file = openFile(path, accessFlags(access), disposition, mode);
  return file != nullptr ? file : INVALID_HANDLE_VALUE;
}

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD count, LPDWORD read, LPOVERLAPPED place) {
  std::size_t done = 0;
  OpenFile* opened = openedAt(file, place);
  const bool succeeded = opened != nullptr && opened->read(buffer, count, done);
  store(read, done);
  return succeeded;
}

BOOL WriteFile(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written, LPOVERLAPPED place) {
  std::size_t done = 0;
  OpenFile* opened = openedAt(file, place);
  const bool succeeded = opened != nullptr && opened->write(bytes, count, done);
  store(written, done);
  return succeeded;
}

// Without a high half the distance is a signed 32-bit number, and the new position must fit into
// 32 bits without being mistaken for the failure value.
DWORD SetFilePointer(HANDLE file, LONG distance, PLONG distanceHigh, DWORD method) {
  OpenFile* opened = fileOf(file);
  if (opened == nullptr) return INVALID_SET_FILE_POINTER;
  const std::int64_t before = opened->position();
  std::int64_t whole = distance;
  if (distanceHigh != nullptr) whole = *distanceHigh * (INT64_C(1) << 32) + DWORD(distance);
  if (!opened->seek(whole, method)) return INVALID_SET_FILE_POINTER;
  const std::int64_t after = opened->position();
  if (distanceHigh != nullptr) {
    *distanceHigh = static_cast<LONG>(after >> 32);
  } else if (after >= std::int64_t{INVALID_SET_FILE_POINTER}) {
    opened->moveTo(before);
    return INVALID_SET_FILE_POINTER;
  }
  return static_cast<DWORD>(after);
}

BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER newPosition,
                      DWORD method) {
  OpenFile* opened = fileOf(file);
  if (opened == nullptr || !opened->seek(distance.QuadPart, method)) return FALSE;
  if (newPosition != nullptr) newPosition->QuadPart = opened->position();
  return TRUE;
}

DWORD GetFileSize(HANDLE file, LPDWORD sizeHigh) {
  LARGE_INTEGER size;
  if (!GetFileSizeEx(file, &size)) return INVALID_FILE_SIZE;
  store(sizeHigh, static_cast<DWORD>(size.QuadPart >> 32));
  return static_cast<DWORD>(size.QuadPart);
}

BOOL GetFileSizeEx(HANDLE file, PLARGE_INTEGER size) {
  const OpenFile* opened = fileOf(file);
  if (opened == nullptr || failsNow(PlatformCall::fileSize)) return FALSE;
  size->QuadPart = opened->size();
  return TRUE;
}

BOOL SetEndOfFile(HANDLE file) {
  OpenFile* opened = fileOf(file);
  return opened != nullptr && opened->truncateHere();
}

BOOL FlushFileBuffers(HANDLE file) {
  OpenFile* opened = fileOf(file);
  return opened != nullptr && opened->sync();
}

BOOL CloseHandle(HANDLE file) {
  const std::unique_ptr<OpenFile> opened(fileOf(file));
  return opened != nullptr && opened->close();
}

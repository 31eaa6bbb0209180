// Picture files over Windows' file calls. Others may read and delete the file while it is read, and
// only read it while it is written; a file that somebody else keeps to himself does not open.
#include "picture_file.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "failure_switch.h"

namespace exifkeep {
namespace {

constexpr size_t largestTransfer = 0x40000000;  // a DWORD counts the bytes of one call

HANDLE handleOf(intptr_t file) {
  return reinterpret_cast<HANDLE>(file);
}

// Where a transfer begins; the handle's own position is not used.
OVERLAPPED placeAt(uint64_t position) {
  OVERLAPPED place = {};
  place.Offset = static_cast<DWORD>(position);
  place.OffsetHigh = static_cast<DWORD>(position >> 32);
  return place;
}

DWORD stepOf(size_t left) {
  return static_cast<DWORD>(std::min(left, largestTransfer));
}

}  // namespace

PictureFile::~PictureFile() {
  if (isOpen()) CloseHandle(handleOf(file_));
}

bool PictureFile::open(const char* path, Purpose purpose) {
  if (failsNow(PlatformCall::open)) return false;
  const bool writes = purpose == Purpose::writing;
  const HANDLE file =
      CreateFileA(path, writes ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ,
                  writes ? FILE_SHARE_READ : FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                  nullptr, writes ? OPEN_ALWAYS : OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  LARGE_INTEGER size;
  if (GetFileType(file) != FILE_TYPE_DISK || !GetFileSizeEx(file, &size)) {
    CloseHandle(file);
    return false;
  }
  file_ = reinterpret_cast<intptr_t>(file);
  size_ = static_cast<uint64_t>(size.QuadPart);
  return true;
}

size_t PictureFile::read(void* bytes, size_t count) {
  if (failsNow(PlatformCall::read)) failed_ = true;
  size_t done = 0;
  while (!failed_ && done < count) {
    OVERLAPPED place = placeAt(position_);
    DWORD got = 0;
    if (!ReadFile(handleOf(file_), static_cast<char*>(bytes) + done, stepOf(count - done), &got,
                  &place) &&
        GetLastError() != ERROR_HANDLE_EOF)
      failed_ = true;
    if (got == 0) break;
    done += got;
    position_ += got;
  }
  return done;
}

PictureReading::PictureReading(const char* path) {
  open(path, Purpose::reading);
}

PictureWriting::PictureWriting(const char* path) : path_(path) {
  if (!open(path, Purpose::writing) || size_ == 0) return;
  failed_ = !SetEndOfFile(handleOf(file_));
  size_ = 0;
}

PictureWriting::~PictureWriting() {
  if (!isOpen()) return;
  CloseHandle(handleOf(std::exchange(file_, -1)));  // an open file cannot be deleted
  DeleteFileA(path_);
}

bool PictureWriting::write(const void* bytes, size_t count) {
  if (failsNow(PlatformCall::write)) failed_ = true;
  size_t done = 0;
  while (!failed_ && done < count) {
    OVERLAPPED place = placeAt(position_);
    DWORD put = 0;
    if (!WriteFile(handleOf(file_), static_cast<const char*>(bytes) + done, stepOf(count - done),
                   &put, &place) ||
        put == 0) {
      failed_ = true;
      break;
    }
    done += put;
    position_ += put;
  }
  size_ = std::max(size_, position_);
  return !failed_;
}

bool PictureWriting::finish() {
  const bool closed = !failsNow(PlatformCall::close);
  if (CloseHandle(handleOf(std::exchange(file_, -1))) && closed && !failed_) return true;
  DeleteFileA(path_);
  return false;
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
#include "system/disk_file.h"

#include <algorithm>
#include <utility>

namespace exifkeep {

namespace {

constexpr DWORD readWrite = GENERIC_READ | GENERIC_WRITE;
constexpr uint64_t maxTransfer = 0x40000000;  // the length of one call is a DWORD

HANDLE openExisting(const char* path, DWORD access, DWORD share) {
  return CreateFileA(path, access, share, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

// The position of a transfer. A file not opened for overlapped access is still read synchronously.
OVERLAPPED placeAt(uint64_t at) {
  OVERLAPPED place = {};
  place.Offset = static_cast<DWORD>(at);
  place.OffsetHigh = static_cast<DWORD>(at >> 32);
  return place;
}

}  // namespace

// The size of a new file is known to be 0: once the file exists, nothing here can fail.
DiskFile::DiskFile(HANDLE handle, bool isNew) : handle_(handle), isSizeKnown_(isNew) {
  check(isOpen());
}

uint64_t DiskFile::size() {
  if (!std::exchange(isSizeKnown_, true) && isOpen()) {
    LARGE_INTEGER size = {};
    if (!check(GetFileSizeEx(handle_, &size))) close();
    size_ = static_cast<uint64_t>(size.QuadPart);
  }
  return size_;
}

bool DiskFile::check(bool succeeded) {
  if (!succeeded && error_ == ERROR_SUCCESS) error_ = GetLastError();
  return succeeded;
}

DiskFile DiskFile::openForReading(const char* path) {
  return {openExisting(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE), false};
}

// Shared for deletion as well, so that a new file can replace it while it is open.
DiskFile DiskFile::openForWriting(const char* path) {
  DiskFile file(
      openExisting(path, readWrite, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE), false);
  file.size();
  return file;
}

DiskFile DiskFile::createNew(const char* path, const DiskFile* pattern) {
  return {CreateFileA(path, readWrite, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                      pattern ? pattern->handle_ : nullptr),
          true};
}

DiskFile::DiskFile(DiskFile&& other) noexcept
    : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)),
      error_(other.error_),
      isSizeKnown_(other.isSizeKnown_),
      size_(other.size_) {}

DiskFile& DiskFile::operator=(DiskFile&& other) noexcept {
  std::swap(handle_, other.handle_);
  std::swap(error_, other.error_);
  std::swap(isSizeKnown_, other.isSizeKnown_);
  std::swap(size_, other.size_);
  return *this;
}

DiskFile::~DiskFile() {
  close();
}

std::string DiskFile::finalPath() const {
  char path[4096];
  const DWORD length = GetFinalPathNameByHandleA(handle_, path, sizeof path, FILE_NAME_NORMALIZED);
  return std::string(path, length < sizeof path ? length : 0);
}

size_t DiskFile::readAt(uint64_t at, void* destination, size_t length) {
  if (!isOpen()) return 0;
  for (size_t done = 0;;) {
    const auto step = static_cast<DWORD>(std::min<uint64_t>(length - done, maxTransfer));
    OVERLAPPED place = placeAt(at + done);
    DWORD delivered = 0;
    const bool isRead =
        ReadFile(handle_, static_cast<char*>(destination) + done, step, &delivered, &place);
    if (!isRead && GetLastError() != ERROR_HANDLE_EOF) check(false);
    done += delivered;
    if (!isRead || delivered < step || done == length) return done;  // or the end of the file
  }
}

bool DiskFile::writeAt(uint64_t at, const void* bytes, size_t length) {
  if (!isOpen()) return false;
  for (size_t done = 0; done < length;) {
    const auto step = static_cast<DWORD>(std::min<uint64_t>(length - done, maxTransfer));
    OVERLAPPED place = placeAt(at + done);
    DWORD written = 0;
    if (!check(WriteFile(handle_, static_cast<const char*>(bytes) + done, step, &written, &place) &&
               written == step))
      return false;
    done += written;
    size_ = std::max(size_, at + done);
  }
  return true;
}

bool DiskFile::setSize(uint64_t size) {
  FILE_END_OF_FILE_INFO end;
  end.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
  if (!check(isOpen() && SetFileInformationByHandle(handle_, FileEndOfFileInfo, &end, sizeof end)))
    return false;
  size_ = size;
  return true;
}

bool DiskFile::flush() {
  return check(isOpen() && FlushFileBuffers(handle_));
}

bool DiskFile::close() {
  return check(isOpen() && CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE)));
}

}  // namespace exifkeep

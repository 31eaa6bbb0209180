#include "system/disk_file.h"

#include <algorithm>
#include <utility>

namespace exifkeep {

namespace {

constexpr DWORD readWrite = GENERIC_READ | GENERIC_WRITE;
constexpr uint64_t largestTransfer = 0x40000000;  // a DWORD counts the bytes of one call

HANDLE openShared(const char* path, DWORD access) {
  return CreateFileA(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Where a transfer begins; a file that was not opened for overlapped work is still read in turn.
OVERLAPPED placeAt(uint64_t at) {
  OVERLAPPED place = {};
  place.Offset = static_cast<DWORD>(at);
  place.OffsetHigh = static_cast<DWORD>(at >> 32);
  return place;
}

}  // namespace

DiskFile::DiskFile(HANDLE handle) : handle_(handle) {
  LARGE_INTEGER size;
  if (isOpen() && GetFileSizeEx(handle_, &size)) size_ = static_cast<uint64_t>(size.QuadPart);
}

DiskFile DiskFile::openForReading(const char* path) {
  const HANDLE handle = openShared(path, readWrite);
  return DiskFile(handle != INVALID_HANDLE_VALUE ? handle : openShared(path, GENERIC_READ));
}

DiskFile DiskFile::openForWriting(const char* path) {
  return DiskFile(openShared(path, readWrite));
}

DiskFile DiskFile::create(const char* path) {
  return DiskFile(
      CreateFileA(path, readWrite, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

DiskFile::DiskFile(DiskFile&& other) noexcept
    : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)), size_(other.size_) {}

DiskFile& DiskFile::operator=(DiskFile&& other) noexcept {
  std::swap(handle_, other.handle_);
  std::swap(size_, other.size_);
  return *this;
}

DiskFile::~DiskFile() {
  close();
}

size_t DiskFile::readAt(uint64_t at, void* destination, size_t length) {
  if (!isOpen() || at >= size_) return 0;
  const size_t wanted = static_cast<size_t>(std::min<uint64_t>(length, size_ - at));
  size_t done = 0;
  for (DWORD delivered = 1; done < wanted && delivered > 0; done += delivered) {
    const auto step = static_cast<DWORD>(std::min<uint64_t>(wanted - done, largestTransfer));
    OVERLAPPED place = placeAt(at + done);
    delivered = 0;
    if (!ReadFile(handle_, static_cast<char*>(destination) + done, step, &delivered, &place)) break;
  }
  return done;
}

bool DiskFile::writeAt(uint64_t at, const void* bytes, size_t length) {
  if (!isOpen()) return false;
  for (size_t done = 0; done < length;) {
    const auto step = static_cast<DWORD>(std::min<uint64_t>(length - done, largestTransfer));
    OVERLAPPED place = placeAt(at + done);
    DWORD written = 0;
    if (!WriteFile(handle_, static_cast<const char*>(bytes) + done, step, &written, &place) ||
        written != step)
      return false;
    done += written;
  }
  return true;
}

bool DiskFile::flush() {
  return isOpen() && FlushFileBuffers(handle_);
}

bool DiskFile::close() {
  return isOpen() && CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
}

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// Others may write, rename and delete the file in the meantime.
#include "picture_file.h"

#include <algorithm>

namespace exifkeep {

PictureReading::PictureReading(const char* path)
    : file_(CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {
  LARGE_INTEGER size = {};
  if (isOpen() && !GetFileSizeEx(file_, &size)) {
    CloseHandle(file_);
    file_ = INVALID_HANDLE_VALUE;
  }
  size_ = static_cast<uint64_t>(size.QuadPart);
}

PictureReading::~PictureReading() {
  if (isOpen()) CloseHandle(file_);
}

size_t PictureReading::read(void* bytes, size_t count) {
  constexpr size_t maxTransfer = 0x40000000;  // the length of one call is a DWORD
  size_t done = 0;
  while (!failed_ && done < count) {
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(position_);
    place.OffsetHigh = static_cast<DWORD>(position_ >> 32);
    DWORD got = 0;
    failed_ = !ReadFile(file_, static_cast<char*>(bytes) + done,
                        static_cast<DWORD>(std::min(count - done, maxTransfer)), &got, &place) &&
              GetLastError() != ERROR_HANDLE_EOF;
    if (got == 0) break;
    done += got;
    position_ += got;
  }
  return done;
}

}  // namespace exifkeep

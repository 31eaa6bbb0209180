// SPDX-License-Identifier: MIT
// Tries names beginning with a different number in each call; O_EXCL guarantees that the name is
// unused.
#include "unique_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <windows.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <new>

namespace exifkeep {
namespace {

constexpr UINT lastNumber = 0xFFFF;

UINT firstNumber() {
  static std::atomic<UINT> calls{0};
  const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
  return static_cast<UINT>(ticks) + 7919 * calls.fetch_add(1, std::memory_order_relaxed);
}

std::string uniquePath(const std::string& head, UINT number) {
  char tail[16];
  std::snprintf(tail, sizeof tail, "%04X.tmp", number);
  return head + tail;
}

}  // namespace

UniqueFile createUniqueFile(const std::string& head, mode_t mode) {
  const UINT first = firstNumber();
  for (UINT tries = 0; tries < lastNumber; ++tries) {
    const UINT number = (first + tries) % lastNumber + 1;
    std::string path = uniquePath(head, number);
    if (auto file = OpenFile::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL, mode))
      return {std::move(file), std::move(path), number};
    struct stat status;
    if (lstat(path.c_str(), &status) != 0)
      break;  // failed for another reason than an existing file
  }
  return {};
}

}  // namespace exifkeep

// As on Windows, with a number other than 0 only the name is made. Three letters of the prefix,
// four digits and ".tmp" are 11 bytes.
UINT GetTempFileNameA(LPCSTR directory, LPCSTR prefix, UINT unique, LPSTR buffer) {
  try {
    std::string head = directory;
    if (!head.empty() && head.back() != '/') head += '/';
    head.append(prefix, strnlen(prefix, 3));
    if (head.size() + sizeof "FFFF.tmp" > MAX_PATH) return 0;
    UINT number = unique & exifkeep::lastNumber;
    if (number == 0) number = exifkeep::createUniqueFile(head, 0666).number;
    if (number != 0) std::strcpy(buffer, exifkeep::uniquePath(head, number).c_str());
    return number;
  } catch (const std::bad_alloc&) {
    return 0;
  }
}

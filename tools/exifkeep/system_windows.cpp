// SPDX-License-Identifier: MIT
// Names and texts are in UTF-8, which the program's manifest makes the code page of the process.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "system.h"

namespace program {
namespace {

HANDLE handleOf(Stream stream) {
  switch (stream) {
    case Stream::input: return GetStdHandle(STD_INPUT_HANDLE);
    case Stream::output: return GetStdHandle(STD_OUTPUT_HANDLE);
    case Stream::error: return GetStdHandle(STD_ERROR_HANDLE);
  }
  return INVALID_HANDLE_VALUE;
}

// Enables ECMA-48 sequences, such as those for colours.
void enableSequences(Stream stream) {
  DWORD mode;
  if (!GetConsoleMode(handleOf(stream), &mode)) return;
  SetConsoleMode(handleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
  SetConsoleOutputCP(CP_UTF8);
}

// The system's message; for common errors the same as on other systems.
std::string reasonOf(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME: return std::strerror(ENOENT);
    case ERROR_ACCESS_DENIED: return std::strerror(EACCES);
    case ERROR_SHARING_VIOLATION: return "another program has it open";
    case ERROR_DISK_FULL: return std::strerror(ENOSPC);
  }
  char text[512];
  DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                error, 0, text, sizeof text, nullptr);
  while (length > 0 && std::strchr("\r\n .", text[length - 1])) --length;
  return length > 0 ? std::string(text, length) : "error " + std::to_string(error);
}

std::string lastReason() {
  return reasonOf(GetLastError());
}

// An open file or folder.
class Opened {
 public:
  Opened(const std::string& path, DWORD access, DWORD share, DWORD disposition, DWORD flags = 0)
      : handle_(CreateFileA(path.c_str(), access, share, nullptr, disposition,
                            FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr)) {}
  ~Opened() { close(); }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;

  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE handle() const { return handle_; }
  bool write(std::string_view bytes) const {
    while (!bytes.empty()) {
      const auto step = static_cast<DWORD>(std::min<size_t>(bytes.size(), 1 << 30));
      DWORD written = 0;
      if (!WriteFile(handle_, bytes.data(), step, &written, nullptr) || written == 0) return false;
      bytes.remove_prefix(written);
    }
    return true;
  }
  bool close() {
    const HANDLE handle = std::exchange(handle_, INVALID_HANDLE_VALUE);
    return handle != INVALID_HANDLE_VALUE && CloseHandle(handle);
  }

 private:
  HANDLE handle_;
};

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

bool isDirectory(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// For a new file beside `path`, however long that is.
std::string nameBeside(const std::string& path) {
  return path.substr(0, path.find_last_of("\\/:") + 1) + "~exifkeep" +
         std::to_string(GetCurrentProcessId()) + '-' + std::to_string(GetTickCount64());
}

// Writes a new file beside the old one and replaces that.
bool replaceWhole(const std::string& path, std::string_view bytes) {
  const EndingDelay delay;
  const std::string temporary = nameBeside(path);
  Opened file(temporary, GENERIC_WRITE, 0, CREATE_NEW);
  if (!file) return false;
  const bool written = file.write(bytes) && file.close();
  if (written &&
      (ReplaceFileA(path.c_str(), temporary.c_str(), nullptr, 0, nullptr, nullptr) ||
       (GetLastError() == ERROR_FILE_NOT_FOUND && MoveFileExA(temporary.c_str(), path.c_str(), 0))))
    return true;
  const DWORD problem = GetLastError();
  file.close();
  DeleteFileA(temporary.c_str());
  SetLastError(problem);
  return false;
}

// Held while the program must not be ended.
SRWLOCK runningOn = SRWLOCK_INIT;
std::atomic<bool> isEnding = false;

// Called on a thread of its own; the system's handler, next in turn, ends the program.
BOOL WINAPI waitToEnd(DWORD) {
  isEnding = true;
  AcquireSRWLockExclusive(&runningOn);
  return FALSE;
}

}  // namespace

void guardDescriptors() {
  // Output must not be converted. Names on standard input may end with CR LF.
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  enableSequences(Stream::output);
  enableSequences(Stream::error);
  SetConsoleCtrlHandler(waitToEnd, TRUE);
}

bool isTerminal(Stream stream) {
  DWORD mode;
  return GetConsoleMode(handleOf(stream), &mode) != 0;
}

bool outputGoesToFile() {
  const DWORD type = GetFileType(handleOf(Stream::output));
  return type == FILE_TYPE_DISK || (type == FILE_TYPE_CHAR && !isTerminal(Stream::output));
}

std::optional<size_t> readInput(char* to, size_t size) {
  const int count = _read(_fileno(stdin), to, static_cast<unsigned>(size));
  return count < 0 ? std::nullopt : std::optional<size_t>(count);
}

bool writeOutput(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto step = static_cast<unsigned>(std::min<size_t>(bytes.size(), 1 << 20));
    const int written = _write(_fileno(stdout), bytes.data(), step);
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

bool delayEnding(bool delayed) {
  static bool current = false;
  if (delayed && !current) AcquireSRWLockExclusive(&runningOn);
  if (!delayed && current) ReleaseSRWLockExclusive(&runningOn);
  // The thread that waits for the lock ends the program; this one must not take the lock again.
  if (!delayed && isEnding) Sleep(INFINITE);
  return std::exchange(current, delayed);
}

bool endingWaits() {
  return isEnding;
}

void setEnvironment(const char* name, const std::string& value) {
  _putenv_s(name, value.c_str());
}

std::string whyNotReadable(const std::string& path) {
  if (isDirectory(path)) return std::strerror(EISDIR);
  const Opened file(path, GENERIC_READ, shareAll, OPEN_EXISTING);
  if (!file) return lastReason();
  return GetFileType(file.handle()) == FILE_TYPE_DISK ? "" : "Not a regular file";
}

std::string whyNotWritable(const std::string& path) {
  const Opened beside(nameBeside(path), GENERIC_WRITE | DELETE, 0, CREATE_NEW,
                      FILE_FLAG_DELETE_ON_CLOSE);
  if (!beside) return "its folder: " + lastReason();
  if (!isThere(path)) return "";
  if (isDirectory(path)) return std::strerror(EISDIR);
  const Opened file(path, GENERIC_READ | GENERIC_WRITE, shareAll, OPEN_EXISTING);
  return file ? "" : lastReason();
}

std::string whyNotReadToEnd(const std::string& path) {
  if (const std::string problem = whyNotReadable(path); !problem.empty()) return problem;
  const Opened file(path, GENERIC_READ, shareAll, OPEN_EXISTING);
  if (!file) return lastReason();
  std::vector<char> buffer(256 * 1024);
  DWORD count;
  do {
    const auto size = static_cast<DWORD>(buffer.size());
    if (!ReadFile(file.handle(), buffer.data(), size, &count, nullptr)) return lastReason();
  } while (count > 0);
  return "";
}

bool isThere(const std::string& path) {
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool isSameFile(const std::string& path, const std::string& other) {
  const Opened first(path, 0, shareAll, OPEN_EXISTING), second(other, 0, shareAll, OPEN_EXISTING);
  BY_HANDLE_FILE_INFORMATION one, two;
  return first && second && GetFileInformationByHandle(first.handle(), &one) &&
         GetFileInformationByHandle(second.handle(), &two) &&
         one.dwVolumeSerialNumber == two.dwVolumeSerialNumber &&
         one.nFileIndexHigh == two.nFileIndexHigh && one.nFileIndexLow == two.nFileIndexLow;
}

std::string replaceFile(const std::string& path, std::string_view bytes) {
  return replaceWhole(path, bytes) ? "" : lastReason();
}

}  // namespace program

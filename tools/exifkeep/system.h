// SPDX-License-Identifier: MIT
// Everything the program needs from the operating system beyond standard C++: standard streams,
// signals and files. Implemented in system_posix.cpp and system_windows.cpp.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace program {

// Makes the standard streams safe to use: no file opened later gets the number of a closed one, and
// writing to a pipe without a reader is an ordinary error.
void guardDescriptors();

enum class Stream { input, output, error };
bool isTerminal(Stream stream);
// Whether standard output is a regular file or the null device.
bool outputGoesToFile();
// Reads up to `size` bytes of standard input, as soon as there are any. Returns their number, 0 at
// the end; nothing, with errno set, on failure.
std::optional<size_t> readInput(char* to, size_t size);
// Writes all bytes to standard output; false, with errno set, on failure.
bool writeOutput(std::string_view bytes);

// Blocks the signals SIGINT, SIGTERM and SIGHUP, or unblocks them, so that a pending one terminates
// the program. On Windows these are Ctrl+C, Ctrl+Break and the closing of the console. Returns
// whether they were blocked.
bool delayEnding(bool delayed);
// Whether one of these signals is pending.
bool endingWaits();

// Blocks these signals during its lifetime. Used for every library call that creates files, so that
// the files are removed before the program ends; a save takes only seconds.
class EndingDelay {
 public:
  explicit EndingDelay(bool delayed = true) : before_(delayEnding(delayed)) {}
  ~EndingDelay() { delayEnding(before_); }
  EndingDelay(const EndingDelay&) = delete;
  EndingDelay& operator=(const EndingDelay&) = delete;

 private:
  bool before_;
};

void setEnvironment(const char* name, const std::string& value);

// Why a file cannot be read or written; empty if it can. FIFOs and devices count as not readable
// and are never opened, because that could block.
std::string whyNotReadable(const std::string& path);
std::string whyNotWritable(const std::string& path);
// The same for the whole file, which is read for that purpose.
std::string whyNotReadToEnd(const std::string& path);

// Whether anything has this name, including a dangling link.
bool isThere(const std::string& path);
// Whether both paths lead to the same existing file.
bool isSameFile(const std::string& path, const std::string& other);

// Replaces the file at `path` atomically by one of these bytes. On failure leaves it unchanged and
// returns the reason. Links are followed; if it is not a regular file, such as a terminal, writes
// to it directly.
std::string replaceFile(const std::string& path, std::string_view bytes);

}  // namespace program

// All that the program asks of the operating system and standard C++ does not give: the standard
// streams, signals, and files as the system sees them. system_posix.cpp and system_windows.cpp
// answer it.
#pragma once

#include <string>
#include <string_view>

namespace program {

// Makes the standard streams safe to use: one that is closed fails when it is used, so that no file
// opened later gets its number, and writing to a pipe without a reader is an ordinary error.
void guardDescriptors();

enum class Stream { input, output, error };
bool isTerminal(Stream stream);
// Whether standard output is a regular file or the null device.
bool outputGoesToFile();
// Writes all bytes to standard output; false, with errno set, when that fails.
bool writeOutput(std::string_view bytes);

// Lets SIGINT, SIGTERM and SIGHUP wait, or no longer; one that waited then ends the program at
// once. On Windows that is Ctrl+C, Ctrl+Break or the end of the console. Returns whether they had to
// wait before.
bool delayEnding(bool delayed);
// Whether one of them is waiting.
bool endingWaits();

// For as long as one lives, the program is not ended by these signals. Each library call that makes
// files runs under one, so that they are removed before the program goes; a save takes seconds at
// most, so nobody waits long.
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

// The reasons are empty when there is none. A FIFO or a device is never opened to find out, because
// that could wait; it is not readable.
std::string whyNotReadable(const std::string& path);
std::string whyNotWritable(const std::string& path);
// The same for reading all of the file, which takes as long as that takes.
std::string whyNotReadToEnd(const std::string& path);

// Whether anything has this name, be it a link that leads nowhere.
bool isThere(const std::string& path);
// Whether both paths lead to one existing file.
bool isSameFile(const std::string& path, const std::string& other);

// Gives `path` these bytes, all of them, or leaves what was there and returns the reason. A link
// keeps pointing to its file; what is no regular file, such as a terminal, is written to directly.
std::string replaceFile(const std::string& path, std::string_view bytes);

}  // namespace program

// All that the program asks of the operating system and standard C++ does not give: the standard
// streams, and files as the system sees them. system_posix.cpp and
// system_windows.cpp answer it.
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

void setEnvironment(const char* name, const std::string& value);

// The reasons are empty when there is none. A FIFO or a device is never opened to find out, because
// that could wait; it is not readable.
std::string whyNotReadable(const std::string& path);
std::string whyNotWritable(const std::string& path);

// Whether anything has this name, be it a link that leads nowhere.
bool isThere(const std::string& path);
// Whether both paths lead to one existing file.
bool isSameFile(const std::string& path, const std::string& other);

// Gives `path` these bytes, all of them, or leaves what was there and returns the reason. A link
// keeps pointing to its file; what is no regular file, such as a terminal, is written to directly.
std::string replaceFile(const std::string& path, std::string_view bytes);

}  // namespace program

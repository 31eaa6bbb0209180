// SPDX-License-Identifier: MIT
// A command's answer for one file on standard output, or the reason why there is none. The library
// returns 0 both for a file without Exif data and for one that cannot be opened; the program
// distinguishes them.
#pragma once

#include <string>
#include <string_view>

#include "terminal.h"

namespace program {

// The program's exit statuses. For several files the highest is returned.
enum class ExitStatus {
  ok = 0,       // all files are Exif files and have what was requested
  notExif = 1,  // at least one is not or has not
  usage = 2,    // the command line is wrong; nothing was done
  failed = 3,   // something could not be opened, read or written
};

// Prints a line "FILE: answer", escaped for a terminal.
void printAnswer(std::string_view path, std::string_view answer, Style style = Style::good);

struct FileRefusal {
  ExitStatus status;  // notExif or failed
  std::string reason;
  const char* error;  // for programs: "missing", "unreadable" or "not-exif"
};

// Why the library returned nothing for `path`: failed if it is missing, not a regular file or not
// readable, else notExif.
FileRefusal explainRefusal(const std::string& path);

// Prints the answer for a file that the library rejected, or an error message if it cannot be
// opened.
ExitStatus answerNotExif(const std::string& path);

// True if `path` can be opened for reading; otherwise prints the reason on standard error.
bool canBeOpened(const std::string& path);

}  // namespace program

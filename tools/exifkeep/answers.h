// What a command says about one file: its answer on standard output, or why there is none. The
// library says 0 both for a file without Exif data and for one that cannot be opened; the program's
// exit status tells them apart.
#pragma once

#include <string>
#include <string_view>

#include "terminal.h"

namespace program {

// The program's exit statuses. They are ordered by weight: of two files' answers the larger one is
// the program's.
enum class ExitStatus {
  ok = 0,       // every file was an Exif file and had what was asked for
  notExif = 1,  // at least one had not
  usage = 2,    // the command line was wrong; nothing was done
  failed = 3,   // something could not be opened, read or written
};

// One line, "FILE: answer", escaped for a terminal.
void printAnswer(std::string_view path, std::string_view answer, Style style = Style::good);

struct FileRefusal {
  ExitStatus status;  // notExif or failed
  std::string reason;
  const char* error;  // for programs: "missing", "unreadable" or "not-exif"
};

// Why the library gave nothing for `path`: failed when it is missing, no regular file or not
// readable, else notExif.
FileRefusal explainRefusal(const std::string& path);

// The answer for a file that the library refused: a line, or a complaint when the file cannot be
// opened.
ExitStatus answerNotExif(const std::string& path);

// True when `path` can be opened for reading; else says why not on standard error.
bool canBeOpened(const std::string& path);

}  // namespace program

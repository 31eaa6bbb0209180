// The files that a command goes over: those of the command line, and for "-" those named on
// standard input, taken one by one as they arrive.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "answers.h"

namespace program {

struct FileNames {
  std::vector<std::string> arguments;
  bool recursive = false;     // a folder stands for the pictures below it, in the order of names
  bool nulSeparated = false;  // names on standard input end in NUL; they are read even without "-"

  bool readsInput() const;
  bool empty() const { return arguments.empty() && !nulSeparated; }
  // Whether answers must tell which file they are about.
  bool several() const { return arguments.size() > 1 || recursive || readsInput(); }
  // Calls `answer` for each name, flushes standard output after each, and returns the gravest
  // status. Ends early when standard output cannot be written. Answers that are kept back until the
  // end leave the terminal free to show how far the work is.
  ExitStatus forEach(const std::function<ExitStatus(const std::string&)>& answer,
                     bool answersKeptBack = false) const;
};

}  // namespace program

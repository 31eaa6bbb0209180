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

  // What says the answer about a file once it is the file's turn, and returns its status.
  using Answer = std::function<ExitStatus()>;
  // The same on up to `jobs` threads: `examine` is called on any of them, and must print nothing;
  // the answers that it returns are called one at a time, in the order of the names.
  ExitStatus forEach(size_t jobs, const std::function<Answer(const std::string&)>& examine) const;

 private:
  // How many files there are; 0 when that is not known before.
  size_t knownCount() const { return readsInput() || recursive ? 0 : arguments.size(); }
  // Calls `takeFile` with each name until it returns false, which gives ExitStatus::failed.
  ExitStatus takeEach(const std::function<bool(const std::string&)>& takeFile) const;
};

}  // namespace program

// SPDX-License-Identifier: MIT
// The files of a command: those given on the command line and, for "-", those named on standard
// input, which are processed as they arrive.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "answers.h"

namespace program {

struct FileNames {
  std::vector<std::string> arguments;
  bool recursive = false;  // a folder means all pictures in it and its subfolders, sorted by name
  bool nulSeparated =
      false;  // names on standard input end with NUL; they are read even without "-"

  bool readsInput() const;
  bool empty() const { return arguments.empty() && !nulSeparated; }
  // Whether answers must include the file name.
  bool several() const { return arguments.size() > 1 || recursive || readsInput(); }
  // Calls `answer` for each name, flushes standard output after each, and returns the worst status.
  // Stops early if standard output cannot be written. If all answers are withheld until the end,
  // the terminal can show the progress.
  ExitStatus forEach(const std::function<ExitStatus(const std::string&)>& answer,
                     bool answersKeptBack = false) const;

  using Group = std::vector<std::string>;  // successive names
  // Prints the answers for a group when it is the group's turn, and returns the worst status.
  using Answer = std::function<ExitStatus()>;
  // The same on up to `jobs` threads: `examine` is called on any of them and must not print; the
  // answers that it returns are called one at a time, in the order of the names. A single thread
  // waits until there are `groupSize` names; several take what there is.
  ExitStatus forEach(size_t jobs, size_t groupSize,
                     const std::function<Answer(const Group&)>& examine) const;

 private:
  // The number of files, or 0 if it is not known in advance.
  size_t knownCount() const { return readsInput() || recursive ? 0 : arguments.size(); }
  // As forEach, for groups of this size; the last may be smaller.
  ExitStatus forEachGroup(size_t size, bool answersKeptBack,
                          const std::function<ExitStatus(const Group&)>& answer) const;
  // Calls `takeFile` with each name. If it returns false, stops and returns ExitStatus::failed.
  ExitStatus takeEach(const std::function<bool(const std::string&)>& takeFile) const;
};

}  // namespace program

// A folder of its own for each test, and shell commands run in it; $E is the program. A command
// sees a fixed environment: English, UTF-8.
#pragma once

#include <sys/wait.h>

#include "platform/scratch.h"

namespace exifkeep::test {

struct Outcome {
  int status;  // the exit status, -1 when a signal ended the command
  std::string out, err;
};

class ShellTest : public ScratchTest {
 protected:
  // What stands in `command` before the program's name sets its environment.
  Outcome run(const std::string& command) const {
    const std::string line = "cd '" + path("") +
                             "' && unset LANGUAGE LC_MESSAGES LC_CTYPE; export LC_ALL=C.UTF-8 E='" +
                             EXIFKEEP_PROGRAM + "'; { " + command + "\n} >.out 2>.err </dev/null";
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read(".out"), read(".err")};
  }
  void write(const std::string& name, const std::string& bytes) const {
    writeFile(path(name), bytes);
  }
  std::string read(const std::string& name) const { return readFile(path(name)); }
};

}  // namespace exifkeep::test

// The command line: which command was chosen, with what options.
#pragma once

#include <string>

#include "commands.h"

namespace program {

// What the command line asks for: a command to run, or a text to print (help or version), or a
// complaint when it makes no sense.
struct CommandLine {
  Command command;
  std::string text;
  std::string complaint;
};

CommandLine parseCommandLine(int count, char** values);

}  // namespace program

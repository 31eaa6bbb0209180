// SPDX-License-Identifier: MIT
// Parses the command line.
#pragma once

#include <string>

#include "commands.h"

namespace program {

// A command to run, a text to print (help or version), or an error message.
struct CommandLine {
  Command command;
  std::string text;
  std::string complaint;
};

CommandLine parseCommandLine(int count, char** values);

}  // namespace program

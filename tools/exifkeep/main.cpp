// SPDX-License-Identifier: MIT
// The command-line program. It is a host of the library like any other and uses only the public
// interface.
#include <afxwin.h>

#include <exception>

#include "command_line.h"
#include "standard_streams.h"

namespace program {
namespace {

ExitStatus run(int count, char** values) {
  const CommandLine parsed = parseCommandLine(count, values);
  if (!parsed.complaint.empty()) {
    complain(parsed.complaint);
    return ExitStatus::usage;
  }
  print(parsed.text);
  const ExitStatus status = parsed.command ? parsed.command() : ExitStatus::ok;
  return flushOutput() ? status : ExitStatus::failed;
}

}  // namespace
}  // namespace program

int main(int count, char** values) {
  program::guardStandardStreams();
  // No message boxes: the commands print messages with the file's name.
  AfxSetMessageBoxHandler([](void*, const char*, UINT) { return IDOK; }, nullptr);
  try {
    return static_cast<int>(program::run(count, values));
  } catch (const std::exception& error) {
    program::complain(error.what());
    return static_cast<int>(program::ExitStatus::failed);
  }
}

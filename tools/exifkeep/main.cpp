// exifkeep, the command-line program: runs the command that the command line asks for. It is a host
// of the library like any other and uses nothing but its public interface.
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
  // What the library would tell in a window, the commands say themselves, with the file's name.
  AfxSetMessageBoxHandler([](void*, const char*, UINT) { return IDOK; }, nullptr);
  try {
    return static_cast<int>(program::run(count, values));
  } catch (const std::exception& error) {
    program::complain(error.what());
    return static_cast<int>(program::ExitStatus::failed);
  }
}

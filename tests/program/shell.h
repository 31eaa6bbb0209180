// A folder of its own for one test, and shell commands run in it; $E is the program. A command sees
// a fixed environment: English, UTF-8.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace exifkeep::test {

struct Outcome {
  int status;  // the exit status, -1 when a signal ended the command
  std::string out, err;
};

class Shell {
 public:
  Shell();
  ~Shell();
  Shell(const Shell&) = delete;
  Shell& operator=(const Shell&) = delete;

  // What stands in `command` before the program's name sets its environment.
  Outcome run(const std::string& command) const;
  std::string path(const std::string& name) const { return (folder_ / "files" / name).string(); }
  void write(const std::string& name, std::string_view bytes) const;
  std::string read(const std::string& name) const;

 private:
  std::filesystem::path folder_;
};

}  // namespace exifkeep::test

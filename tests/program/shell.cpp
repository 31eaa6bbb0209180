// Commands go through /bin/sh, so that tests can redirect, close and pipe what a user could.
#include "program/shell.h"

#include <stdlib.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace exifkeep::test {
namespace {

std::filesystem::path makeFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "exifkeep-test-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  return name;
}

std::string contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

Shell::Shell() : folder_(makeFolder()) {
  std::filesystem::create_directory(folder_ / "files");
}

Shell::~Shell() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

Outcome Shell::run(const std::string& command) const {
  const std::string line = "cd '" + folder_.string() +
                           "/files' && unset LANGUAGE LC_MESSAGES LC_CTYPE; " +
                           "export LC_ALL=C.UTF-8 E='" EXIFKEEP_PROGRAM "'; { " + command +
                           "\n} >../out 2>../err </dev/null";
  const int status = std::system(line.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(folder_ / "out"),
          contents(folder_ / "err")};
}

void Shell::write(const std::string& name, std::string_view bytes) const {
  std::ofstream(path(name), std::ios::binary) << bytes;
}

std::string Shell::read(const std::string& name) const {
  return contents(path(name));
}

}  // namespace exifkeep::test

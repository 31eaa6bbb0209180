// File names from arguments and from standard input.
#include "file_names.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>

#include "standard_streams.h"
#include "terminal.h"

namespace program {
namespace {

// The next name on standard input; none at its end. A NUL, which no name can hold, ends a name in
// either form, and empty lines are passed over.
std::optional<std::string> nextInputName(bool nulSeparated) {
  std::string name;
  int byte;
  while ((byte = std::getc(stdin)) != EOF) {
    const bool ended = byte == '\0' || (byte == '\n' && !nulSeparated);
    if (!ended) {
      name += static_cast<char>(byte);
    } else if (!name.empty()) {
      return name;
    }
  }
  if (name.empty()) return std::nullopt;
  return name;
}

bool holdsDash(const std::vector<std::string>& names) {
  return std::find(names.begin(), names.end(), "-") != names.end();
}

ExitStatus endOfInput() {
  if (!std::ferror(stdin)) return ExitStatus::ok;
  complainAbout("standard input", std::strerror(errno));
  return ExitStatus::failed;
}

}  // namespace

bool FileNames::readsInput() const {
  return nulSeparated || holdsDash(arguments);
}

ExitStatus FileNames::forEach(const std::function<ExitStatus(const std::string&)>& answer,
                              bool answersKeptBack) const {
  ExitStatus gravest = ExitStatus::ok;
  BatchProgress progress(readsInput() ? 0 : arguments.size(), answersKeptBack);
  const auto take = [&](const std::string& name) {
    gravest = std::max(gravest, answer(name));
    progress.advance();
    return flushOutput();
  };
  std::vector<std::string> names = arguments;
  if (nulSeparated && !holdsDash(names)) names.push_back("-");
  for (const std::string& argument : names) {
    if (argument != "-") {
      if (!take(argument)) return ExitStatus::failed;
      continue;
    }
    while (const std::optional<std::string> name = nextInputName(nulSeparated)) {
      if (!take(*name)) return ExitStatus::failed;
    }
    gravest = std::max(gravest, endOfInput());
  }
  return gravest;
}

}  // namespace program

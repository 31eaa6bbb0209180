// SPDX-License-Identifier: MIT
#include "file_names.h"

#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include "ordered_work.h"
#include "standard_streams.h"
#include "system.h"
#include "terminal.h"

namespace program {
namespace {

// The next name on standard input, or none at its end. A NUL, which no name can contain, always
// terminates a name. Empty lines are skipped.
std::optional<std::string> nextInputName(bool nulSeparated) {
  std::string name;
  int byte;
  while ((byte = std::getc(stdin)) != EOF) {
    const bool ended = byte == '\0' || (byte == '\n' && !nulSeparated);
    if (!ended)
      name += static_cast<char>(byte);
    else if (!name.empty())
      return name;
  }
  if (name.empty()) return std::nullopt;
  return name;
}

bool holdsDash(const std::vector<std::string>& names) {
  return std::find(names.begin(), names.end(), "-") != names.end();
}

// Whether the input begins like a picture instead of a name. What precedes the first NUL of a TIFF
// file could also be a name.
bool holdsPicture(const std::string& firstName) {
  if (firstName == "II*" || firstName == "MM") return !isThere(firstName);
  return firstName.starts_with("\xFF\xD8\xFF") || firstName.starts_with("\x89PNG");
}

bool hasPictureName(const std::filesystem::path& path) {
  const std::string extension = path.extension().string();
  for (const char* known : {".jpg", ".jpeg", ".jpe", ".tif", ".tiff"})
    if (lstrcmpiA(extension.c_str(), known) == 0) return true;
  return false;
}

// Links to folders are not followed, so that the search ends. Prints an error message for each
// folder that cannot be read.
std::vector<std::string> picturesBelow(const std::string& folder, ExitStatus& status) {
  namespace fs = std::filesystem;
  std::vector<std::string> names, folders = {folder};
  for (size_t at = 0; at < folders.size(); ++at) {
    const std::string current = folders[at];
    std::error_code error, unknown;
    fs::directory_iterator entry(current, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
      if (entry->is_directory(unknown) && !entry->is_symlink(unknown))
        folders.push_back(entry->path().string());
      else if (hasPictureName(entry->path()) && entry->is_regular_file(unknown))
        names.push_back(entry->path().string());
    }
    if (error) {
      complainAbout(current, error.message());
      status = ExitStatus::failed;
    }
  }
  std::sort(names.begin(), names.end());
  return names;
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

ExitStatus FileNames::takeEach(const std::function<bool(const std::string&)>& takeFile) const {
  ExitStatus worst = ExitStatus::ok;
  const auto take = [&](const std::string& name) {
    std::error_code unknown;
    if (!recursive || !std::filesystem::is_directory(name, unknown)) return takeFile(name);
    const std::vector<std::string> pictures = picturesBelow(name, worst);
    return std::all_of(pictures.begin(), pictures.end(), takeFile);
  };
  std::vector<std::string> names = arguments;
  if (nulSeparated && !holdsDash(names)) names.push_back("-");
  for (const std::string& argument : names) {
    if (argument != "-") {
      if (!take(argument)) return ExitStatus::failed;
      continue;
    }
    bool isFirst = true;
    while (const std::optional<std::string> name = nextInputName(nulSeparated)) {
      if (std::exchange(isFirst, false) && holdsPicture(*name)) {
        complainAbout("standard input", "holds a picture; - reads names of pictures");
        return ExitStatus::failed;
      }
      if (!take(*name)) return ExitStatus::failed;
    }
    worst = std::max(worst, endOfInput());
  }
  return worst;
}

ExitStatus FileNames::forEach(const std::function<ExitStatus(const std::string&)>& answer,
                              bool answersKeptBack) const {
  ExitStatus worst = ExitStatus::ok;
  BatchProgress progress(knownCount(), answersKeptBack);
  const ExitStatus ofNames = takeEach([&](const std::string& name) {
    worst = std::max(worst, answer(name));
    progress.advance();
    return flushOutput();
  });
  return std::max(worst, ofNames);
}

ExitStatus FileNames::forEach(size_t jobs,
                              const std::function<Answer(const std::string&)>& examine) const {
  const size_t threads = knownCount() == 0 ? jobs : std::min(jobs, knownCount());
  if (threads == 1) return forEach([&](const std::string& name) { return examine(name)(); });
  ExitStatus worst = ExitStatus::ok;
  BatchProgress progress(knownCount(), false);
  OrderedWork work(
      threads,
      [&](const std::string& name) -> OrderedWork::Delivery {
        return [&, answer = examine(name)] {
          worst = std::max(worst, answer());
          progress.advance();
        };
      },
      flushOutput);
  const ExitStatus ofNames = takeEach([&](const std::string& name) { return work.add(name); });
  const bool finished = work.finish();
  return finished ? std::max(worst, ofNames) : ExitStatus::failed;
}

}  // namespace program

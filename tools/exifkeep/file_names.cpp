// SPDX-License-Identifier: MIT
#include "file_names.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cerrno>
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

// The names on standard input, as they arrive.
class InputNames {
 public:
  explicit InputNames(bool nulSeparated) : nulSeparated_(nulSeparated) {}

  // The next name, or an empty string after the last. A NUL, which no name can contain, always
  // terminates a name. Empty lines are skipped.
  std::string next() {
    const auto terminates = [this](char byte) {
      return byte == '\0' || (byte == '\n' && !nulSeparated_);
    };
    std::string name;
    while (!unread_.empty() || (!ended_ && readMore())) {
      const auto end = std::find_if(unread_.begin(), unread_.end(), terminates);
      name.append(unread_.begin(), end);
      const bool terminated = end != unread_.end();
      unread_ = {end + terminated, unread_.end()};
      if (terminated && !name.empty()) break;
    }
    return name;
  }
  // Why the input could not be read to its end; empty if it could.
  const std::string& error() const { return error_; }

 private:
  bool readMore() {
    const std::optional<size_t> count = readInput(block_.data(), block_.size());
    if (!count) error_ = std::strerror(errno);
    unread_ = {block_.data(), count.value_or(0)};
    ended_ = unread_.empty();
    return !ended_;
  }

  const bool nulSeparated_;
  std::array<char, 4096> block_;
  std::string_view unread_;  // a part of the block
  bool ended_ = false;
  std::string error_;
};

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
    InputNames input(nulSeparated);
    bool isFirst = true;
    for (std::string name; !(name = input.next()).empty();) {
      if (std::exchange(isFirst, false) && holdsPicture(name)) {
        complainAbout("standard input", "holds a picture; - reads names of pictures");
        return ExitStatus::failed;
      }
      if (!take(name)) return ExitStatus::failed;
    }
    if (input.error().empty()) continue;
    complainAbout("standard input", input.error());
    worst = ExitStatus::failed;
  }
  return worst;
}

ExitStatus FileNames::forEachGroup(size_t size, bool answersKeptBack,
                                   const std::function<ExitStatus(const Group&)>& answer) const {
  ExitStatus worst = ExitStatus::ok;
  BatchProgress progress(knownCount(), answersKeptBack);
  Group group;
  const auto answerGroup = [&] {
    worst = std::max(worst, answer(group));
    progress.advance(group.size());
    group.clear();
    return flushOutput();
  };
  const ExitStatus ofNames = takeEach([&](const std::string& name) {
    group.push_back(name);
    return group.size() < size || answerGroup();
  });
  if (!group.empty()) answerGroup();
  return std::max(worst, ofNames);
}

ExitStatus FileNames::forEach(const std::function<ExitStatus(const std::string&)>& answer,
                              bool answersKeptBack) const {
  return forEachGroup(1, answersKeptBack,
                      [&](const Group& group) { return answer(group.front()); });
}

ExitStatus FileNames::forEach(size_t jobs, size_t groupSize,
                              const std::function<Answer(const Group&)>& examine) const {
  const size_t threads = knownCount() == 0 ? jobs : std::min(jobs, knownCount());
  if (threads == 1)
    return forEachGroup(groupSize, false, [&](const Group& group) { return examine(group)(); });
  ExitStatus worst = ExitStatus::ok;
  BatchProgress progress(knownCount(), false);
  OrderedWork work(
      threads,
      [&](const Group& group) -> OrderedWork::Delivery {
        return [&, count = group.size(), answer = examine(group)] {
          worst = std::max(worst, answer());
          progress.advance(count);
        };
      },
      flushOutput);
  const ExitStatus ofNames = takeEach([&](const std::string& name) { return work.add(name); });
  const bool finished = work.finish();
  return finished ? std::max(worst, ofNames) : ExitStatus::failed;
}

}  // namespace program

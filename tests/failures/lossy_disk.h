// A small file system that may lose what was not synced. It holds what a traced save changed in a
// folder, found by comparing the folder before and after every system call, and gives all that the
// disk may hold when the power fails: each change that no fsync followed, of the file or, for a
// name, of the folder it is in, may be there or not, alone or with others. POSIX orders nothing.
#pragma once

#include <sys/stat.h>

#include <algorithm>
#include <set>
#include <vector>

#include "platform/scratch.h"

namespace exifkeep::test {

// What a folder holds: numbers of files and folders by their paths, and the files' bytes.
struct Tree {
  std::map<std::string, int> names;  // the folder itself is ""
  std::map<int, std::string> bytes;

  // The bytes of the file of this name; none when it, or a folder on the way, is not there.
  const std::string* find(const std::string& path) const {
    for (size_t slash = path.find('/'); slash != path.npos; slash = path.find('/', slash + 1))
      if (!names.contains(path.substr(0, slash))) return nullptr;
    const auto name = names.find(path);
    const auto found = name == names.end() ? bytes.end() : bytes.find(name->second);
    return found == bytes.end() ? nullptr : &found->second;
  }
  bool holds(const std::string& wanted) const {
    return std::any_of(names.begin(), names.end(), [&](const auto& name) {
      const std::string* file = find(name.first);
      return file && *file == wanted;
    });
  }
};

class LossyDisk {
 public:
  // Follows the file `name` and all files that have its first bytes; others lose nothing.
  LossyDisk(const std::string& folder, const std::string& name) : folder_(folder), name_(name) {
    now_ = start_ = read();
    if (const std::string* bytes = now_.find(name)) old_ = *bytes;
    follow();
  }

  const Tree& start() const { return start_; }
  const Tree& now() const { return now_; }
  size_t changes() const { return changes_.size(); }

  // After a system call: what the folder has become.
  void record() {
    Tree before = std::move(now_);
    now_ = read();
    std::map<std::string, int> links;
    for (const auto& [path, file] : now_.names)
      if (!before.names.contains(path) || before.names[path] != file) links[path] = file;
    for (const auto& [path, file] : before.names)
      if (!now_.names.contains(path)) links.emplace(path, 0);
    if (!links.empty()) {
      // A rename changes two names at once; it lasts when the new one's folder is synced.
      const auto leads = [](const auto& link) { return link.second != 0; };
      auto link = std::find_if(links.begin(), links.end(), leads);
      if (link == links.end()) link = links.begin();
      const size_t slash = link->first.rfind('/');
      const std::string parent = slash == std::string::npos ? "" : link->first.substr(0, slash);
      changes_.push_back({Change::names, before.names[parent], 0, {}, links});
    }
    for (const auto& [file, bytes] : now_.bytes) compare(file, before.bytes[file], bytes);
    follow();
  }
  // After an fsync that succeeded.
  void recordSync(const std::string& openFile) {
    const auto file = numbers_.find(numberOf(openFile));
    if (file != numbers_.end()) changes_.push_back({Change::sync, file->second});
  }

  // Shows `check` all that there may be after the first `count` changes. With more than ten of them
  // not synced, these: one is lost, one is kept, all from one on are lost.
  template <class Check>
  void forEachStateAfter(size_t count, Check check) const {
    const std::set<std::string> paths = followedPaths();
    std::vector<size_t> loose;
    for (size_t i = 0; i < count; ++i)
      if (isLoose(i, count, paths)) loose.push_back(i);
    const size_t n = loose.size();
    if (n <= 10) {
      for (size_t kept = 0; kept < size_t{1} << n; ++kept)
        check(without(loose, count, [&](size_t i) { return (kept >> i & 1) == 0; }));
      return;
    }
    for (size_t one = 0; one <= n; ++one) {
      check(without(loose, count, [&](size_t i) { return i == one; }));
      check(without(loose, count, [&](size_t i) { return i != one; }));
      check(without(loose, count, [&](size_t i) { return i >= one; }));
    }
  }

 private:
  // Bytes written, a size cut, names that lead to other files (0: to none), or an fsync.
  struct Change {
    enum { bytes, size, names, sync } kind;
    int file;  // or folder
    size_t at = 0;
    std::string written = {};
    std::map<std::string, int> links = {};
  };

  static ino_t numberOf(const std::string& path) {
    struct stat status = {};
    stat(path.c_str(), &status);
    return status.st_ino;
  }

  // The system may give the number of a file that is gone to a new one; here it gets its own.
  Tree read() {
    Tree tree;
    std::map<ino_t, int> numbers;
    const auto add = [&](const std::filesystem::path& path, const std::string& name) {
      const ino_t number = numberOf(path);
      const auto known = numbers_.find(number);
      const int file = known != numbers_.end() ? known->second : ++files_;
      tree.names[name] = numbers[number] = file;
      if (is_regular_file(path)) tree.bytes[file] = readFile(path);
    };
    add(folder_, "");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_))
      add(entry.path(), entry.path().lexically_relative(folder_));
    numbers_ = std::move(numbers);
    return tree;
  }

  void compare(int file, const std::string& before, const std::string& after) {
    if (after.size() < before.size()) changes_.push_back({Change::size, file, after.size()});
    const size_t common = std::min(before.size(), after.size());
    size_t begin = 0, end = after.size();
    while (begin < common && before[begin] == after[begin]) ++begin;
    while (end > begin && end <= common && before[end - 1] == after[end - 1]) --end;
    // Each half may come without the other.
    const size_t middle = begin + (end - begin + 1) / 2;
    for (const auto& [from, to] : {std::pair(begin, middle), std::pair(middle, end)})
      if (from < to) changes_.push_back({Change::bytes, file, from, after.substr(from, to - from)});
  }

  void follow() {
    for (const auto& [path, file] : now_.names) {
      const auto bytes = now_.bytes.find(file);
      if (path == name_ || (bytes != now_.bytes.end() && bytes->second == old_))
        followed_.insert(file);
    }
  }

  // Every path that a followed file had at some time.
  std::set<std::string> followedPaths() const {
    std::set<std::string> paths{name_};
    for (const Change& change : changes_)
      for (const auto& [path, file] : change.links)
        if (followed_.contains(file)) paths.insert(path);
    return paths;
  }

  bool isLoose(size_t change, size_t count, const std::set<std::string>& paths) const {
    const Change& it = changes_[change];
    const auto isOnTheWay = [&paths](const auto& link) {
      return std::any_of(paths.begin(), paths.end(), [&link](const std::string& path) {
        return path == link.first || path.starts_with(link.first + '/');
      });
    };
    const auto syncs = [&it](const Change& later) {
      return later.kind == Change::sync && later.file == it.file;
    };
    const bool counts = it.kind == Change::names
                            ? std::any_of(it.links.begin(), it.links.end(), isOnTheWay)
                            : it.kind != Change::sync && followed_.contains(it.file);
    return counts && std::none_of(changes_.begin() + static_cast<ptrdiff_t>(change),
                                  changes_.begin() + static_cast<ptrdiff_t>(count), syncs);
  }

  template <class IsLost>
  Tree without(const std::vector<size_t>& loose, size_t count, IsLost isLost) const {
    Tree tree = start_;
    for (size_t i = 0, next = 0; i < count; ++i) {
      const bool isLoose = next < loose.size() && loose[next] == i;
      if (!isLoose || !isLost(next)) apply(changes_[i], tree);
      next += isLoose;
    }
    return tree;
  }

  static void apply(const Change& change, Tree& tree) {
    const size_t end = change.at + change.written.size();
    if (change.kind == Change::size) tree.bytes[change.file].resize(change.at);
    if (change.kind == Change::bytes) {
      std::string& bytes = tree.bytes[change.file];
      bytes.resize(std::max(bytes.size(), end));
      bytes.replace(change.at, change.written.size(), change.written);
    }
    for (const auto& [path, file] : change.links)
      if (file != 0)
        tree.names[path] = file;
      else
        tree.names.erase(path);
  }

  const std::string folder_, name_;
  std::string old_;
  std::map<ino_t, int> numbers_;
  int files_ = 0;
  std::set<int> followed_;
  Tree start_, now_;
  std::vector<Change> changes_;
};

}  // namespace exifkeep::test

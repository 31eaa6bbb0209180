// SPDX-License-Identifier: MIT
// A save is interrupted at each of its system calls: by a kill, by a power failure, by a signal,
// and by somebody who replaces a new file by a link. Processes are traced; if that is not
// permitted, the tests are skipped.
#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "failures/saved_pictures.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

// A child process that stops after each of its system calls, so that tests can examine it,
// interfere or kill it.
class TracedChild {
 public:
  // The child runs `call` and exits with its result.
  template <class Call>
  explicit TracedChild(Call call) : id_(fork()) {
    if (id_ != 0) return;
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(99);
    raise(SIGSTOP);
    _exit(call());
  }
  ~TracedChild() {
    if (!exitCode_) end(SIGKILL);
  }

  // False if tracing is not permitted.
  bool begin() {
    wait();
    const auto options = PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACEEXEC;
    return !exitCode_ && ptrace(PTRACE_SETOPTIONS, id_, nullptr, options) == 0;
  }
  // Continues to the end of the next system call; false if the process has ended.
  bool step() {
    for (;;) {
      ptrace(PTRACE_SYSCALL, id_, nullptr, nullptr);
      wait();
      if (exitCode_) return false;
      __ptrace_syscall_info stop = {};
      ptrace(PTRACE_GET_SYSCALL_INFO, id_, sizeof stop, &stop);
      if (stop.op == PTRACE_SYSCALL_INFO_ENTRY) {
        call_ = static_cast<long>(stop.entry.nr);
        descriptor_ = std::to_string(stop.entry.args[0]);
      }
      if (stop.op != PTRACE_SYSCALL_INFO_EXIT) continue;
      succeeded_ = !stop.exit.is_error;
      return true;
    }
  }
  // Sends a signal and lets the child run until it ends.
  void end(int signal) {
    ::kill(id_, signal);
    ptrace(PTRACE_DETACH, id_, nullptr, nullptr);
    wait();
  }

  // The call that has just succeeded, or -1; and the file that its first argument refers to.
  long call() const { return succeeded_ ? call_ : -1; }
  std::string openFile() const { return "/proc/" + std::to_string(id_) + "/fd/" + descriptor_; }
  // 128 plus the signal, if it was killed by one.
  std::optional<int> exitCode() const { return exitCode_; }

 private:
  void wait() {
    int status = 0;
    waitpid(id_, &status, 0);
    if (WIFEXITED(status)) exitCode_ = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) exitCode_ = 128 + WTERMSIG(status);
  }

  pid_t id_;
  std::optional<int> exitCode_;
  long call_ = 0;
  std::string descriptor_;
  bool succeeded_ = false;
};

// Simulates a disk that keeps what was synced and may lose anything else, as permitted by POSIX.
// Compares a folder before and after every system call of a traced save and determines the possible
// states of the disk after a power failure.
class LossyDisk {
 public:
  static inline const std::string nothing = "(no file)", anything = "(unsynced bytes)";

  explicit LossyDisk(const std::string& folder) : folder_(folder) {
    record();
    looseNames_.clear();
    looseFiles_.clear();
  }

  // After a system call.
  void record() {
    std::map<std::string, ino_t> numbers{{"", numberOf(folder_)}};
    std::map<ino_t, std::string> bytes;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_)) {
      const ino_t number = numberOf(entry.path());
      numbers[entry.path().lexically_relative(folder_)] = number;
      if (entry.is_regular_file()) bytes[number] = readFile(entry.path());
    }
    std::map<std::string, ino_t> changed;
    std::ranges::set_symmetric_difference(numbers, numbers_, std::inserter(changed, changed.end()));
    for (const auto& [path, number] : changed) looseNames_[path].insert(bytesOf(path));
    for (const auto& [number, content] : bytes)
      if (content != bytes_[number]) looseFiles_.insert(number);
    // The system may reuse the number of a deleted file.
    std::erase_if(looseFiles_, [&](ino_t number) { return !bytes.contains(number); });
    numbers_ = std::move(numbers);
    bytes_ = std::move(bytes);
  }
  // After a successful fsync of a file, or of a folder with the names in it.
  void recordSync(const std::string& openFile) {
    const ino_t number = numberOf(openFile);
    looseFiles_.erase(number);
    std::erase_if(looseNames_, [&](const auto& name) {
      const auto parent = numbers_.find(name.first.substr(0, slashIn(name.first)));
      return parent != numbers_.end() && parent->second == number;
    });
  }

  // All possible contents of a file of this name after a power failure now.
  std::set<std::string> mayHold(const std::string& path) const {
    const auto loose = looseNames_.find(path);
    std::set<std::string> all =
        loose == looseNames_.end() ? std::set<std::string>() : loose->second;
    all.insert(bytesOf(path));
    for (size_t end = slashIn(path); end > 0; end = slashIn(path.substr(0, end)))
      if (looseNames_.contains(path.substr(0, end))) all.insert(nothing);
    return all;
  }
  // Whether there certainly is a file with these bytes.
  bool surelyHolds(const std::string& bytes) const {
    return std::ranges::any_of(
        numbers_, [&](const auto& file) { return mayHold(file.first) == std::set{bytes}; });
  }

 private:
  static ino_t numberOf(const std::string& path) {
    struct stat status = {};
    stat(path.c_str(), &status);
    return status.st_ino;
  }
  static size_t slashIn(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == path.npos ? 0 : slash;
  }
  std::string bytesOf(const std::string& path) const {
    const auto number = numbers_.find(path);
    const auto bytes = number == numbers_.end() ? bytes_.end() : bytes_.find(number->second);
    if (bytes == bytes_.end()) return nothing;
    return looseFiles_.contains(bytes->first) ? anything : bytes->second;
  }

  const std::string folder_;
  std::map<std::string, ino_t> numbers_;  // of files and folders, by path; the folder itself is ""
  std::map<ino_t, std::string> bytes_;
  std::map<std::string, std::set<std::string>> looseNames_;  // and what they may still hold
  std::set<ino_t> looseFiles_;
};

class InterruptedSave : public SavedPictures {
 protected:
  ~InterruptedSave() override { fs::permissions(path(""), fs::perms::owner_all); }

  int save(const std::string& source, const std::string& destination) const {
    PRaster picture = makePicture(newWidth);
    return SaveFile(path(source).c_str(), path(destination).c_str(), &picture, nullptr);
  }
  bool isNew(const std::string& name) const {
    return IsExifFile(path(name).c_str()) && widthOf(path(name)) == newWidth;
  }
};

// The ways to save: a new file, the replacement of an old one, or overwriting if the folder does
// not permit a new file.
struct Way {
  const char *name, *source, *destination;
  bool overwrites = false;
};

class SaveOnALossyDisk : public InterruptedSave, public testing::WithParamInterface<Way> {
 protected:
  int saveAsOrdinaryUser() const {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 && (setegid(nobody) != 0 || seteuid(nobody) != 0)) return 99;
    return save(GetParam().source, GetParam().destination);
  }
};

TEST_P(SaveOnALossyDisk, LeavesTheOldPictureOrTheNewOneAtEveryPoint) {
  const std::string source = GetParam().source, destination = GetParam().destination;
  const bool overwrites = GetParam().overwrites;
  if (overwrites) {
    fs::permissions(path(destination), fs::perms(0666));
    fs::permissions(path(""), fs::perms(0555));
  }
  const auto found = originals_.find(destination);
  const std::string old = found == originals_.end() ? LossyDisk::nothing : found->second;
  TracedChild child([&] { return overwrites ? saveAsOrdinaryUser() : save(source, destination); });
  if (!child.begin()) GTEST_SKIP() << "tracing is not allowed";
  LossyDisk disk(path(""));
  std::vector<std::pair<std::set<std::string>, bool>> points;  // what it may hold; the old is kept
  while (child.step()) {
    disk.record();
    if (child.call() == SYS_fsync || child.call() == SYS_fdatasync)
      disk.recordSync(child.openFile());
    points.emplace_back(disk.mayHold(destination), overwrites && disk.surelyHolds(old));
    // After a kill there is at most one other file beside the destination.
    ASSERT_LE(names().size(), found == originals_.end() ? 5u : 4u);
  }
  ASSERT_EQ(child.exitCode(), 1);
  ASSERT_TRUE(isNew(destination));

  const std::string saved = readFile(path(destination));
  for (const auto& [held, isKept] : points)
    for (const std::string& bytes : held)
      ASSERT_TRUE(isKept || bytes == old || bytes == saved) << "call " << &held - &points[0].first;
  EXPECT_EQ(points.back().first, std::set{saved});
  // No file is left, and only the destination has changed.
  originals_[destination] = saved;
  EXPECT_EQ(files(), originals_);
}

const Way ways[] = {
    {"NewJpeg", "source.jpg", "new.jpg"},
    {"NewTiff", "source.tif", "new.tif"},
    {"ReplacedJpeg", "source.jpg", "source.jpg"},
    {"ReplacedTiff", "source.tif", "source.tif"},
    {"OverwrittenJpeg", "source.jpg", "source.jpg", true},
    {"OverwrittenTiff", "source.tif", "source.tif", true},
};
INSTANTIATE_TEST_SUITE_P(, SaveOnALossyDisk, testing::ValuesIn(ways),
                         [](const auto& way) { return way.param.name; });

TEST_F(InterruptedSave, ASignalLeavesNoFileOfTheProgram) {
  constexpr int signals[] = {SIGINT, SIGTERM, SIGHUP};
  for (int calls = 0;; ++calls) {
    SCOPED_TRACE(std::to_string(calls) + " calls after the first file was made");
    restore();
    TracedChild child([&] {
      setenv("ASAN_OPTIONS", "detect_leaks=0", 1);  // because that check cannot be traced
      dup2(open("/dev/null", O_WRONLY), 1);
      return execl(EXIFKEEP_PROGRAM, "exifkeep", "save", path("source.tif").c_str(),
                   path("source.tif").c_str(), nullptr);
    });
    if (!child.begin()) GTEST_SKIP() << "tracing is not allowed";
    while (child.step() && names().size() == 3 && fs::is_empty(path("tmp"))) continue;
    for (int i = 0; i < calls && child.step(); ++i) continue;
    if (child.exitCode()) {
      EXPECT_EQ(child.exitCode(), 0);
      EXPECT_GT(calls, 10);
      break;
    }
    const int signal = signals[calls % 3];
    child.end(signal);
    ASSERT_EQ(child.exitCode(), 128 + signal);
    ASSERT_EQ(widthOf(path("source.tif")), oldWidth);
    ASSERT_EQ(files().size(), originals_.size());
  }
}

// If others may write to a folder, a name need not lead to the file that was created under it.
TEST_F(InterruptedSave, NoLinkPutInTheWayIsFollowed) {
  for (int calls = 1;; ++calls) {
    SCOPED_TRACE("after call " + std::to_string(calls));
    restore();
    writeFile(path("victim"), "another's");
    fs::permissions(path("victim"), fs::perms::owner_read);
    const auto before = names();
    TracedChild child([this] { return save("source.jpg", "source.jpg"); });
    if (!child.begin()) GTEST_SKIP() << "tracing is not allowed";
    for (int i = 0; i < calls && child.step(); ++i) continue;
    if (child.exitCode()) break;
    for (const std::string& name : names()) {
      if (before.contains(name)) continue;
      fs::remove(path(name));
      fs::create_symlink("victim", path(name));
    }
    while (child.step()) continue;
    ASSERT_TRUE(readFile(path("victim")) == "another's");
    ASSERT_TRUE(fs::status(path("victim")).permissions() == fs::perms::owner_read);
  }
}

}  // namespace
}  // namespace exifkeep::test

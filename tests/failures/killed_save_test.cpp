// A process that saves over a picture is killed before each of its system calls: the picture is
// then the old one, byte for byte, or the whole new one, and the next save works. The child is
// traced; where that is not allowed the tests are skipped.
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <optional>

#include "failures/saved_pictures.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

constexpr unsigned oldWidth = 24, newWidth = 40;

// A process that runs a call, stopped where its system calls begin and where they end.
class TracedChild {
 public:
  template <class Call>
  explicit TracedChild(Call call) : id_(fork()) {
    if (id_ != 0) return;
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(99);
    raise(SIGSTOP);
    _exit(call());
  }
  ~TracedChild() {
    if (!exitCode_) kill();
  }
  TracedChild(const TracedChild&) = delete;
  TracedChild& operator=(const TracedChild&) = delete;

  bool begin() {
    wait();
    return !exitCode_ && ptrace(PTRACE_SETOPTIONS, id_, nullptr, PTRACE_O_EXITKILL) == 0;
  }
  // Goes on to the next stop; false when the process has ended.
  bool step() {
    ptrace(PTRACE_SYSCALL, id_, nullptr, nullptr);
    wait();
    return !exitCode_;
  }
  void kill() {
    ::kill(id_, SIGKILL);
    wait();
  }
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
};

class KilledSave : public SavedPictures, public testing::WithParamInterface<const char*> {
 protected:
  KilledSave() {
    saveWithMetadata(name_, oldWidth);
    old_ = readFile(path(name_));
  }

  int save() const {
    PRaster picture = makePicture(newWidth);
    return SaveFile(path(name_).c_str(), path(name_).c_str(), &picture, nullptr);
  }
  bool isOld() const { return readFile(path(name_)) == old_; }
  // The times in it differ from run to run, its size does not.
  bool isNew(size_t size) const {
    return fs::file_size(path(name_)) == size && IsExifFile(path(name_).c_str()) &&
           widthOf(path(name_)) == newWidth;
  }
  // The picture alone, and a folder for the temporary ones that a killed process leaves behind.
  void restore() const {
    for (const std::string& name : names()) fs::remove_all(path(name));
    writeFile(path(name_), old_);
    fs::create_directory(path("tmp"));
  }

  const std::string name_ = GetParam();
  std::string old_;
};

TEST_P(KilledSave, LeavesTheOldPictureOrTheNewOne) {
  ASSERT_EQ(save(), 1);
  const size_t newSize = fs::file_size(path(name_));
  for (int olds = 0, news = 0;;) {
    SCOPED_TRACE("killed before call " + std::to_string(olds + news + 1));
    restore();
    TracedChild child([this] { return setenv("TMPDIR", path("tmp").c_str(), 1), save(); });
    if (!child.begin()) GTEST_SKIP() << "tracing is not allowed";
    for (int i = 0; i <= 2 * (olds + news) && child.step(); ++i) continue;
    if (child.exitCode()) {
      EXPECT_EQ(child.exitCode(), 1);
      EXPECT_GT(olds, 3);
      EXPECT_GT(news, 0) << "never killed behind the rename";
      break;
    }
    child.kill();
    ++(isOld() ? olds : news);
    EXPECT_TRUE(isOld() || isNew(newSize));
    const size_t files = names().size();
    EXPECT_LE(files, 3u);
    EXPECT_EQ(save(), 1);
    EXPECT_TRUE(isNew(newSize));
    EXPECT_EQ(names().size(), files);
  }
}

INSTANTIATE_TEST_SUITE_P(Pictures, KilledSave, testing::Values("saved.jpg", "saved.tif"));

}  // namespace
}  // namespace exifkeep::test

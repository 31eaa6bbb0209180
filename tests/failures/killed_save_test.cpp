// A process that saves over a picture is killed before each system call that changes a file: the
// picture is then the old one, byte for byte, or the whole new one, and the next save works. The
// child is traced; where that is not allowed the tests are skipped.
#include <exifkeep/exifkeep.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "imageio/image_codec_bridge.h"

namespace fs = std::filesystem;

namespace {

constexpr unsigned oldWidth = 24, newWidth = 40, height = 16;

#if defined(__x86_64__)  // newer architectures do without these
constexpr uint64_t olderChanges[] = {SYS_rename, SYS_unlink, SYS_mkdir,
                                     SYS_rmdir,  SYS_chmod,  SYS_chown};
#else
constexpr uint64_t olderChanges[] = {SYS_renameat2};
#endif
constexpr uint64_t changes[] = {SYS_write,    SYS_pwrite64,  SYS_writev,   SYS_ftruncate,
                                SYS_fsync,    SYS_fdatasync, SYS_renameat, SYS_renameat2,
                                SYS_unlinkat, SYS_mkdirat,   SYS_fchmod,   SYS_fchown};

bool changesFiles(const __ptrace_syscall_info& info) {
  if (info.entry.nr == SYS_openat) return (info.entry.args[2] & (O_CREAT | O_TRUNC)) != 0;
  return std::ranges::count(changes, info.entry.nr) ||
         std::ranges::count(olderChanges, info.entry.nr);
}

// A process that runs a call, stopped at its system calls.
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
    return !exitCode_ &&
           ptrace(PTRACE_SETOPTIONS, id_, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) == 0;
  }
  // Goes on to the entry of the next call that changes a file; false when there is none.
  bool nextChange() {
    for (;;) {
      ptrace(PTRACE_SYSCALL, id_, nullptr, nullptr);
      wait();
      if (exitCode_) return false;
      __ptrace_syscall_info info = {};
      if (ptrace(PTRACE_GET_SYSCALL_INFO, id_, sizeof info, &info) > 0 &&
          info.op == PTRACE_SYSCALL_INFO_ENTRY && changesFiles(info))
        return true;
    }
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

struct Scenario {
  const char* name;
  const char* extension;
  int (*save)(char* path, PRaster& picture);
};

void PrintTo(const Scenario& scenario, std::ostream* stream) {
  *stream << scenario.name;
}

int saveOver(char* path, PRaster& picture) {
  return SaveFile(path, path, &picture, nullptr);
}

int addAudio(char* path, PRaster& picture) {
  return AddAudio(path, "a program", &picture, nullptr);
}

class KilledSave : public testing::TestWithParam<Scenario> {
 protected:
  KilledSave() {
    char name[] = "/tmp/exifkeep-killed-XXXXXX";
    folder_ = mkdtemp(name);
    fs::create_directory(folder_ / "temporary");
    setenv("TMPDIR", (folder_ / "temporary").c_str(), 1);
    path_ = folder_ / (std::string("picture.") + GetParam().extension);
    PRaster picture = makePicture(oldWidth);
    std::string path = path_;
    EXPECT_EQ(SaveFile("none", path.data(), &picture, nullptr), 1);
    EXPECT_EQ(AddAudio(path.data(), "an older program", &picture, nullptr), 1);
    old_ = bytes();
  }
  ~KilledSave() override { fs::remove_all(folder_); }

  static PRaster makePicture(unsigned width) {
    PRaster picture;
    EXPECT_EQ(picture.CreateImage(PRaster::type24Bit, width, height), 1);
    for (unsigned y = 0; y < height; ++y) std::memset(picture.row(y), int(width + y), width * 3);
    return picture;
  }
  std::string bytes() const {
    std::ifstream file(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void restore() const { std::ofstream(path_, std::ios::binary) << old_; }
  int save() {
    PRaster picture = makePicture(newWidth);
    std::string path = path_;
    return GetParam().save(path.data(), picture);
  }
  bool isOld() const { return bytes() == old_; }
  // The times in it differ from run to run, its size does not.
  bool isNew(size_t size) const {
    const auto image = exifkeep::ImageCodecBridge().loadImageFile(path_.c_str());
    return fs::file_size(path_) == size && IsExifFile(path_.c_str()) && image &&
           image->width() == newWidth && image->height() == height;
  }
  // The picture itself and the folder for temporary files do not count.
  size_t filesBeside() const {
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder_), {})) - 2;
  }
  void removeLeftovers() const {
    for (const auto& entry : fs::directory_iterator(folder_))
      if (entry.is_regular_file() && entry.path() != path_) fs::remove(entry.path());
  }

  fs::path folder_, path_;
  std::string old_;
};

TEST_P(KilledSave, LeavesTheOldPictureOrTheNewOne) {
  ASSERT_EQ(save(), 1);
  const size_t newSize = fs::file_size(path_);
  int olds = 0, news = 0;
  for (;; removeLeftovers()) {
    SCOPED_TRACE("killed at change " + std::to_string(olds + news + 1));
    restore();
    TracedChild child([this] { return save(); });
    if (!child.begin()) GTEST_SKIP() << "tracing is not allowed";
    for (int i = 0; i <= olds + news && child.nextChange(); ++i) {
    }
    if (child.exitCode()) {
      EXPECT_EQ(child.exitCode(), 1);
      break;
    }
    child.kill();
    ++(isOld() ? olds : news);
    EXPECT_TRUE(isOld() || isNew(newSize));
    const size_t leftovers = filesBeside();
    EXPECT_LE(leftovers, 1u);
    EXPECT_EQ(save(), 1);
    EXPECT_TRUE(isNew(newSize));
    EXPECT_EQ(filesBeside(), leftovers);
  }
  RecordProperty("olds", olds);
  RecordProperty("news", news);
  EXPECT_GT(olds, 3);
  EXPECT_GT(news, 0) << "never killed behind the rename";
}

INSTANTIATE_TEST_SUITE_P(Scenarios, KilledSave,
                         testing::Values(Scenario{"SaveJpeg", "jpg", saveOver},
                                         Scenario{"SaveTiff", "tif", saveOver},
                                         Scenario{"AudioJpeg", "jpg", addAudio},
                                         Scenario{"AudioTiff", "tif", addAudio}),
                         [](const auto& info) { return info.param.name; });

}  // namespace

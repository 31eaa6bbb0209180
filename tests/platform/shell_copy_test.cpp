// The shell's copy: what it asks, what it leaves, and that nothing is lost when it does not finish.
#include <failure_switch.h>
#include <platform/scratch.h>
#include <shellapi.h>
#include <sys/stat.h>
#include <unistd.h>

namespace exifkeep::test {
namespace {

using Names = std::set<std::string>;

// A host that answers as told and notes what it was asked.
struct Host {
  Host() { SetShellCopyHandler({mayOverwrite, progress, this}); }
  ~Host() { SetShellCopyHandler({}); }

  static bool mayOverwrite(void* context, HWND, const char*, const char*) {
    auto* host = static_cast<Host*>(context);
    ++host->questions;
    return host->overwrite;
  }
  static bool progress(void* context, HWND, std::uint64_t done, std::uint64_t) {
    auto* host = static_cast<Host*>(context);
    host->lastDone = done;
    return host->chunksUntilCancel-- != 0;
  }

  bool overwrite = true;
  int chunksUntilCancel = -1;  // never
  int questions = 0;
  std::uint64_t lastDone = 0;
};

enum Outcome { done, failed, cancelled };

class ShellCopyTest : public ScratchTest {
 protected:
  ~ShellCopyTest() override { EXPECT_EQ(openHandles(), 0); }

  Outcome copy(const std::string& from, const std::string& to) {
    const std::string source = path(from) + '\0', target = path(to) + '\0';
    SHFILEOPSTRUCTA copying = {};
    copying.wFunc = FO_COPY;
    copying.pFrom = source.c_str();
    copying.pTo = target.c_str();
    copying.fAnyOperationsAborted = TRUE;
    const int result = SHFileOperationA(&copying);
    EXPECT_TRUE(result != 0 || !copying.fAnyOperationsAborted);
    return copying.fAnyOperationsAborted ? cancelled : result == 0 ? done : failed;
  }
  // What every copy that does not happen leaves.
  void expectNothingHappened() {
    EXPECT_EQ(readFile(path("to")), "old");
    EXPECT_EQ(names(), (Names{"from", "to"}));
  }

  const std::string sound_ = std::string(700000, 's') + "end";
};

TEST_F(ShellCopyTest, CopiesBytesRightsAndTime) {
  writeFile(path("from"), sound_);
  chmod(path("from").c_str(), 0600);
  const auto time = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1000);
  std::filesystem::last_write_time(path("from"), time);
  EXPECT_EQ(copy("from", "to"), done);
  EXPECT_TRUE(readFile(path("to")) == sound_);
  EXPECT_EQ(std::filesystem::last_write_time(path("to")), time);
  struct stat status;
  ASSERT_EQ(stat(path("to").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  writeFile(path("empty"), "");
  EXPECT_EQ(copy("empty", "copy of empty"), done);
  EXPECT_EQ(names(), (Names{"from", "to", "empty", "copy of empty"}));
}

TEST_F(ShellCopyTest, ReplacesOnlyWhenTheHostSaysSo) {
  writeFile(path("from"), sound_);
  writeFile(path("to"), "old");
  EXPECT_EQ(copy("from", "to"), cancelled);
  Host host;
  host.overwrite = false;
  EXPECT_EQ(copy("from", "to"), cancelled);
  EXPECT_EQ(readFile(path("to")), "old");
  host.overwrite = true;
  EXPECT_EQ(copy("from", "to"), done);
  EXPECT_TRUE(readFile(path("to")) == sound_);
  EXPECT_EQ(host.questions, 2);
  EXPECT_EQ(host.lastDone, sound_.size());
}

TEST_F(ShellCopyTest, CancellingLeavesEverythingAsItWas) {
  writeFile(path("from"), sound_);
  writeFile(path("to"), "old");
  for (int chunks = 0; chunks < 4; ++chunks) {
    for (const char* target : {"to", "new"}) {
      Host host;
      host.chunksUntilCancel = chunks;
      EXPECT_EQ(copy("from", target), cancelled) << target << chunks;
      expectNothingHappened();
    }
  }
}

TEST_F(ShellCopyTest, AFileCopiedToItselfStaysWhole) {
  writeFile(path("from"), sound_);
  ASSERT_EQ(link(path("from").c_str(), path("hard").c_str()), 0);
  ASSERT_EQ(symlink("from", path("soft").c_str()), 0);
  Host host;
  for (const char* target : {"from", "./from", "hard", "soft"}) {
    EXPECT_EQ(copy("from", target), done) << target;
    EXPECT_TRUE(readFile(path("from")) == sound_) << target;
  }
  EXPECT_EQ(host.questions, 0);
}

TEST_F(ShellCopyTest, RefusesWhatItCannotCopy) {
  writeFile(path("from"), sound_);
  ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
  std::filesystem::create_directory(path("dir"));
  Host host;
  for (const char* source : {"fifo", "dir", "missing"}) EXPECT_EQ(copy(source, "to"), failed);
  for (const char* target : {"fifo", "dir", "no/to"}) EXPECT_EQ(copy("from", target), failed);
  EXPECT_EQ(names(), (Names{"dir", "fifo", "from"}));
}

TEST_F(ShellCopyTest, EveryFailingCallLeavesEverythingAsItWas) {
  writeFile(path("from"), sound_);
  writeFile(path("to"), "old");
  Host host;
  const std::pair<PlatformCall, int> cases[] = {
      {PlatformCall::open, 2}, {PlatformCall::read, 3},  {PlatformCall::write, 3},
      {PlatformCall::sync, 1}, {PlatformCall::close, 1}, {PlatformCall::rename, 1}};
  for (const auto& [kind, calls] : cases) {
    for (int n = 1; n <= calls; ++n) {
      failCall(kind, n);
      EXPECT_EQ(copy("from", "to"), failed) << static_cast<int>(kind) << ", call " << n;
      expectNothingHappened();
    }
  }
}

}  // namespace
}  // namespace exifkeep::test

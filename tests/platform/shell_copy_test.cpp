// SPDX-License-Identifier: MIT
#include <shellapi.h>
#include <sys/stat.h>

#include "failure_switch.h"
#include "platform/scratch.h"

namespace exifkeep::test {
namespace {

using Names = std::set<std::string>;

// A host with given answers.
struct Host {
  Host() {
    SetShellCopyHandler({[](void* host, HWND, const char*, const char*) {
                           return static_cast<Host*>(host)->overwrite;
                         },
                         [](void* host, HWND, uint64_t, uint64_t) {
                           return static_cast<Host*>(host)->chunksUntilCancel-- != 0;
                         },
                         this});
  }
  ~Host() { SetShellCopyHandler({}); }

  bool overwrite = true;
  int chunksUntilCancel = -1;  // never
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
    return copying.fAnyOperationsAborted ? cancelled : result == 0 ? done : failed;
  }
  const std::string sound_ = std::string(700000, 's') + "end";
};

TEST_F(ShellCopyTest, CopiesBytesModeAndTimeAndReplacesOnlyWithConsent) {
  writeFile(path("from"), sound_);
  chmod(path("from").c_str(), 0600);
  const auto time = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1000);
  std::filesystem::last_write_time(path("from"), time);
  EXPECT_EQ(copy("from", "new"), done);
  EXPECT_TRUE(readFile(path("new")) == sound_);
  EXPECT_EQ(std::filesystem::last_write_time(path("new")), time);
  EXPECT_EQ(std::filesystem::status(path("new")).permissions(), std::filesystem::perms{0600});

  writeFile(path("to"), "old");
  EXPECT_EQ(copy("from", "to"), cancelled);
  std::filesystem::create_symlink("from", path("itself"));
  EXPECT_EQ(copy("from", "itself"), done);
  Host host;
  host.overwrite = false;
  EXPECT_EQ(copy("from", "to"), cancelled);
  EXPECT_EQ(readFile(path("to")), "old");
  host.overwrite = true;
  EXPECT_EQ(copy("from", "to"), done);
  EXPECT_TRUE(readFile(path("to")) == sound_);
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

TEST_F(ShellCopyTest, CancelledAndFailedCopiesChangeNothing) {
  writeFile(path("from"), sound_);
  writeFile(path("to"), "old");
  const auto expectNothingHappened = [this](Outcome expected, const char* to, int kind, int n) {
    EXPECT_EQ(copy("from", to), expected) << to << ", kind " << kind << ", call " << n;
    EXPECT_EQ(readFile(path("to")), "old");
    EXPECT_EQ(names(), (Names{"from", "to"}));
  };
  Host host;
  const std::pair<PlatformCall, int> cases[] = {
      {PlatformCall::open, 2}, {PlatformCall::read, 3},  {PlatformCall::write, 3},
      {PlatformCall::sync, 1}, {PlatformCall::close, 1}, {PlatformCall::rename, 1}};
  for (const auto& [kind, calls] : cases) {
    for (int n = 1; n <= calls; ++n) {
      failCall(kind, n);
      expectNothingHappened(failed, "to", static_cast<int>(kind), n);
    }
  }
  for (int chunks = 0; chunks < 8; ++chunks) {
    host.chunksUntilCancel = chunks / 2;
    expectNothingHappened(cancelled, chunks % 2 ? "to" : "new", -1, chunks);
  }
}

}  // namespace
}  // namespace exifkeep::test

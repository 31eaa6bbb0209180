// A save interrupted at each of its system calls: by the end of the process, by the end of power,
// by a signal to the program, and by somebody who puts a link in the place of a new file. Processes
// are traced; where that is not allowed the tests are skipped.
#include <fcntl.h>
#include <sys/syscall.h>

#include "failures/lossy_disk.h"
#include "failures/saved_pictures.h"
#include "failures/traced_child.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

constexpr unsigned oldWidth = 24, newWidth = 40;

class InterruptedSave : public SavedPictures {
 protected:
  InterruptedSave() {
    for (const char* name : {"saved.jpg", "saved.tif"}) {
      saveWithMetadata(name, oldWidth);
      originals_[name] = readFile(path(name));
    }
    fs::create_directory(path("tmp"));
    fs::permissions(path("tmp"), fs::perms::all);
    setenv("TMPDIR", path("tmp").c_str(), 1);
  }
  ~InterruptedSave() override {
    fs::permissions(path(""), fs::perms::owner_all);
    unsetenv("TMPDIR");
  }

  int save(const std::string& source, const std::string& destination) const {
    PRaster picture = makePicture(newWidth);
    return SaveFile(path(source).c_str(), path(destination).c_str(), &picture, nullptr);
  }
  bool isNew(const std::string& name) const {
    return IsExifFile(path(name).c_str()) && widthOf(path(name)) == newWidth;
  }
  void restore() const {
    for (const std::string& name : names())
      if (name != "tmp") fs::remove(path(name));
    for (const auto& [name, bytes] : originals_) writeFile(path(name), bytes);
  }

  std::map<std::string, std::string> originals_;
};

// How a save reaches its destination: as a new file or in place of an old one, or, where the folder
// admits no file, through the old file itself.
struct Way {
  const char *source, *destination;
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
  const auto& [source, destination, overwrites] = GetParam();
  if (overwrites) {
    fs::permissions(path(destination), fs::perms(0666));
    fs::permissions(path(""), fs::perms(0555));
  }
  const auto found = originals_.find(destination);
  const std::string* old = found == originals_.end() ? nullptr : &found->second;
  TracedChild child([&] { return overwrites ? saveAsOrdinaryUser() : save(source, destination); });
  if (!child.begin()) GTEST_SKIP() << "tracing is not allowed";
  LossyDisk disk(path(""), destination);
  while (child.step()) {
    disk.record();
    if (child.call() == SYS_fsync || child.call() == SYS_fdatasync)
      disk.recordSync(child.openFile());
    // A kill leaves at most one file beside the destination.
    ASSERT_LE(names().size(), originals_.size() + (old ? 2 : 3));
  }
  ASSERT_EQ(child.exitCode(), 1);
  ASSERT_TRUE(isNew(destination));

  const std::string saved = readFile(path(destination));
  int states = 0, olds = 0;
  for (size_t count = 0; count <= disk.changes(); ++count) {
    int lost = 0;
    disk.forEachStateAfter(count, [&](const Tree& tree) {
      const std::string* picture = tree.find(destination);
      const bool isNew = picture && *picture == saved;
      const bool isOld = picture && old ? *picture == *old : picture == old;
      const bool isKept = isOld || (overwrites && tree.holds(*old));
      lost += !(isNew || (isKept && count < disk.changes()));
      olds += isOld;
      ++states;
    });
    ASSERT_EQ(lost, 0) << "after change " << count << " of " << disk.changes();
  }
  EXPECT_GT(olds, 3);
  RecordProperty("states", states);
  // Nothing stays, and no file changed but the destination.
  Tree expected = disk.start(), rest = disk.now();
  expected.names[destination] = rest.names[destination];
  EXPECT_EQ(rest.names, expected.names);
}

INSTANTIATE_TEST_SUITE_P(Ways, SaveOnALossyDisk,
                         testing::Values(Way{"saved.jpg", "saved.jpg"},
                                         Way{"saved.tif", "saved.tif"}, Way{"saved.jpg", "new.jpg"},
                                         Way{"saved.tif", "new.tif"},
                                         Way{"saved.jpg", "saved.jpg", true},
                                         Way{"saved.tif", "saved.tif", true}));

TEST_F(InterruptedSave, ASignalLeavesNoFileOfTheProgram) {
  constexpr int signals[] = {SIGINT, SIGTERM, SIGHUP};
  const auto before = names();
  for (int calls = 0;; ++calls) {
    SCOPED_TRACE(std::to_string(calls) + " calls after the first file was made");
    restore();
    TracedChild child([&] {
      setenv("ASAN_OPTIONS", "detect_leaks=0", 1);  // that check cannot be traced
      dup2(open("/dev/null", O_WRONLY), 1);
      return execl(EXIFKEEP_PROGRAM, "exifkeep", "save", path("saved.tif").c_str(),
                   path("saved.tif").c_str(), nullptr);
    });
    if (!child.begin()) GTEST_SKIP() << "tracing is not allowed";
    while (child.step() && names() == before && fs::is_empty(path("tmp"))) continue;
    for (int i = 0; i < calls && child.step(); ++i) continue;
    if (child.exitCode()) {
      EXPECT_EQ(child.exitCode(), 0);
      EXPECT_GT(calls, 10);
      break;
    }
    const int signal = signals[calls % 3];
    child.end(signal);
    ASSERT_EQ(child.exitCode(), 128 + signal);
    ASSERT_EQ(widthOf(path("saved.tif")), oldWidth);
    ASSERT_EQ(names(), before);
    ASSERT_TRUE(fs::is_empty(path("tmp")));
  }
}

// In a folder that others may write, a name need not lead to the file that was made under it.
TEST_F(InterruptedSave, NoLinkPutInTheWayIsFollowed) {
  for (int calls = 1;; ++calls) {
    SCOPED_TRACE("after call " + std::to_string(calls));
    restore();
    writeFile(path("victim"), "another's");
    fs::permissions(path("victim"), fs::perms::owner_read);
    const auto before = names();
    TracedChild child([this] { return save("saved.jpg", "saved.jpg"); });
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

// SPDX-License-Identifier: MIT
// Saves over a picture where the system refuses part of what a save needs: nothing may be lost, the
// picture is saved if possible, and the old file's properties are kept. Each case runs in a process
// of its own with its own mounts, and is skipped if the machine does not permit that.
#include <fcntl.h>
#include <grp.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>

#include "failures/saved_pictures.h"

namespace exifkeep::test {
namespace {

namespace fs = std::filesystem;

constexpr unsigned largeWidth = 3000;
constexpr uid_t nobody = 65534;
constexpr gid_t club = 12345;

// The pictures are "here/a.jpg" and "here/a.tif"; `root` ends in "/". All return false where
// something is not allowed.
bool give(const std::string& path, uid_t owner, gid_t group, mode_t mode) {
  return chown(path.c_str(), owner, group) == 0 && chmod(path.c_str(), mode) == 0;
}

bool becomeNobody(bool isInClub) {
  return setgroups(isInClub ? 1 : 0, &club) == 0 && setegid(nobody) == 0 && seteuid(nobody) == 0;
}

// Mounts a file system on the folder, keeps the files in it, and creates more while possible.
bool mountFull(const std::string& folder, const char* options) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::directory_iterator(folder))
    files[entry.path().filename()] = readFile(entry.path());
  if (mount("none", folder.c_str(), "tmpfs", 0, options) != 0) return false;
  for (const auto& [name, bytes] : files) writeFile(folder + "/" + name, bytes);
  for (int i = 0; i < 30; ++i)
    writeFile(folder + "/full" + std::to_string(i), std::string(4096, 'x'));
  return true;
}

// Mounts a copy of the picture, in a folder of this name, over it.
bool mountCopy(const std::string& root, const std::string& folder, const char* fullDisk = nullptr) {
  const std::string picture = root + "here/a.jpg", copy = root + folder + "/a.jpg";
  fs::create_directory(root + folder);
  fs::copy(picture, copy);
  return (!fullDisk || mountFull(root + folder, fullDisk)) &&
         mount(copy.c_str(), picture.c_str(), nullptr, MS_BIND, nullptr) == 0;
}

bool setImmutable(const std::string& path, bool on) {
  return std::system(("chattr " + std::string(on ? "+i " : "-i ") + path + " 2>&-").c_str()) == 0;
}

// From now on the system call fails with this error if its third argument has these flags.
bool refuse(long call, int error, unsigned flags = 0) {
  const auto number = static_cast<unsigned>(call), result = static_cast<unsigned>(error);
  sock_filter steps[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                         BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 4),
                         BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[2])),
                         BPF_STMT(BPF_ALU | BPF_AND | BPF_K, flags),
                         BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, flags, 0, 1),
                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | result),
                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
  const sock_fprog program = {std::size(steps), steps};
  return prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

bool refuseToRename(int error) {
#ifdef SYS_rename
  if (!refuse(SYS_rename, error)) return false;
#endif
  return refuse(SYS_renameat, error) && refuse(SYS_renameat2, error);
}

enum Outcome { replaced, overwritten, refused };

struct Place {
  const char* name;
  Outcome expected;
  bool (*prepare)(const std::string& root);  // finally it may become the user nobody
  mode_t kept = 07777;                       // of the rights
  const char* picture = "a.jpg";
};

const Place places[] = {
    {"Ordinary", replaced, [](auto&) { return true; }},
    {"StickyFolderOfAnother", overwritten,
     [](auto& root) {
       return give(root + "here", 0, 0, 01777) && give(root + "here/a.jpg", 0, 0, 0666) &&
              becomeNobody(false);
     }},
    {"MountedFile", overwritten, [](auto& root) { return mountCopy(root, "disk"); }},
    {"MountedFileOfAFullDisk", refused,
     [](auto& root) { return mountCopy(root, "disk", "size=64k"); }},
    {"NoInodes", refused, [](auto& root) { return mountFull(root + "here", "nr_inodes=8"); }},
    {"NoRoom", refused, [](auto& root) { return mountFull(root + "here", "size=64k"); }},
    {"NeitherInodesNorRoom", refused,
     [](auto& root) { return mountFull(root + "here", "nr_inodes=8,size=32k"); }},
    {"NoRoomForTemporaryFiles", replaced,
     [](auto& root) { return mountFull(root + "tmp", "size=64k"); }},
    {"NoRoomForTemporaryFilesNorARename", refused,
     [](auto& root) { return mountFull(root + "tmp", "size=64k") && refuseToRename(EXDEV); }},
    {"NoProcAndALink", replaced,
     [](auto& root) {
       fs::rename(root + "here/a.jpg", root + "here/real.jpg");
       fs::create_symlink("real.jpg", root + "here/a.jpg");
       return mount("none", "/proc", "tmpfs", 0, nullptr) == 0;
     }},
    {"ImmutableFile", refused, [](auto& root) { return setImmutable(root + "here/a.jpg", true); }},
    {"AccessList", replaced,
     [](auto& root) {
       // Version 2; owner rw, user 0 r, group none, mask r, others none.
       const char list[] =
           "\2\0\0\0\1\0\6\0\377\377\377\377\2\0\4\0\0\0\0\0\4\0\0\0\377\377\377\377"
           "\20\0\4\0\377\377\377\377\40\0\0\0\377\377\377\377";
       return setxattr((root + "here/a.jpg").c_str(), "system.posix_acl_access", list,
                       sizeof list - 1, 0) == 0;
     }},
    {"Attribute", replaced,
     [](auto& root) {
       return setxattr((root + "here/a.jpg").c_str(), "user.rating", "5", 1, 0) == 0;
     }},
    {"GroupOfAnother", replaced,
     [](auto& root) {
       return give(root + "here", nobody, nobody, 0700) &&
              give(root + "here/a.jpg", nobody, club, 0660) && becomeNobody(false);
     },
     0700},
    {"OwnedByAnotherInMyGroup", replaced,
     [](auto& root) {
       return give(root + "here", nobody, nobody, 0700) &&
              give(root + "here/a.jpg", 0, club, 0664) && becomeNobody(true);
     }},
    {"TooManyOpenFiles", refused, [](auto&) { return refuse(SYS_openat, EMFILE, O_CREAT); }},
    {"QuotaUsedUp", refused, [](auto&) { return refuse(SYS_openat, EDQUOT, O_CREAT); }},
    {"RenameOutOfRoom", refused, [](auto&) { return refuseToRename(ENOSPC); }},
    {"RenameAcrossDevices", overwritten, [](auto&) { return refuseToRename(EXDEV); }},
    {"RenameOfTiffAcrossDevices", overwritten, [](auto&) { return refuseToRename(EXDEV); }, 07777,
     "a.tif"},
    {"SyncFails", refused, [](auto&) { return refuse(SYS_fsync, EIO); }},
    {"SyncUnknown", replaced, [](auto&) { return refuse(SYS_fsync, ENOSYS); }},
    {"SyncUnsupported", replaced, [](auto&) { return refuse(SYS_fsync, EOPNOTSUPP); }},
    {"RightsRefused", replaced, [](auto&) { return refuse(SYS_fchmod, EPERM); }, 0600},
};

// The properties of a picture's file.
struct State {
  explicit State(const std::string& path) : bytes(readFile(path)) {
    stat(path.c_str(), &status);
    for (const char* name : {"system.posix_acl_access", "user.rating"}) {
      char value[100];
      const ssize_t size = getxattr(path.c_str(), name, value, sizeof value);
      attributes.emplace_back(value, static_cast<size_t>(std::max<ssize_t>(size, 0)));
    }
  }
  struct stat status = {};
  std::string bytes;
  std::vector<std::string> attributes;
};

class RefusingPlace : public SavedPictures, public testing::WithParamInterface<Place> {
 protected:
  RefusingPlace() {
    fs::permissions(path(""), fs::perms(0755));
    fs::create_directory(path("here"));
    for (const char* type : {".jpg", ".tif"})
      fs::copy(path("source") + type, path("here/a") + type);
  }
  ~RefusingPlace() override { setImmutable(path("here/a.jpg"), false); }

  static bool ownMounts() {
    return unshare(CLONE_NEWNS) == 0 &&
           mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
  }

  void saveAndCompare() const {
    const Files filesBefore = files();
    const std::string picture = path("here/") + GetParam().picture;
    const State before(picture);
    PRaster image = makePicture(largeWidth);
    const int result = SaveFile(picture.c_str(), picture.c_str(), &image, nullptr);
    ASSERT_EQ(seteuid(0), 0);
    const State after(picture);
    EXPECT_EQ(result, GetParam().expected != refused);
    EXPECT_EQ(result == 0, before.bytes == after.bytes);
    EXPECT_EQ(widthOf(picture), result ? largeWidth : oldWidth);
    EXPECT_EQ(IsExifFile(picture.c_str()), 1);
    EXPECT_EQ(GetParam().expected != replaced, before.status.st_ino == after.status.st_ino);
    EXPECT_EQ(after.status.st_mode & 07777, before.status.st_mode & GetParam().kept);
    EXPECT_TRUE(after.status.st_gid == before.status.st_gid || (after.status.st_mode & 070) == 0);
    EXPECT_EQ(after.attributes, before.attributes);
    const Files left = files();
    EXPECT_TRUE(std::ranges::equal(left, filesBefore, {}, &Files::value_type::first,
                                   &Files::value_type::first));
  }
};

TEST_P(RefusingPlace, LosesNothing) {
  constexpr int notAllowed = 77;
  const pid_t child = fork();
  if (child == 0) {
    if (!ownMounts() || !GetParam().prepare(path(""))) _exit(notAllowed);
    saveAndCompare();
    _exit(HasFailure());
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFEXITED(status) && WEXITSTATUS(status) == notAllowed)
    GTEST_SKIP() << "not allowed on this machine";
  EXPECT_EQ(status, 0);
}

INSTANTIATE_TEST_SUITE_P(, RefusingPlace, testing::ValuesIn(places),
                         [](const auto& place) { return place.param.name; });

}  // namespace
}  // namespace exifkeep::test

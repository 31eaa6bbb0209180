// A private directory per thread, so that the fixed names which callers use for their temporary
// files never meet: not on two threads, not in two processes, and not with another user's links.
// It is made (mkdtemp, mode 0700) under $TMPDIR or /tmp when first asked for and removed when its
// thread ends; a thread that is still running when the process ends leaves its directory behind.
#include <dirent.h>
#include <failure_switch.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <temporary_directory.h>
#include <unistd.h>
#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

namespace exifkeep {
namespace {

class TemporaryDirectory {
 public:
  TemporaryDirectory() = default;
  ~TemporaryDirectory() { remove(); }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  // Ends in "/"; empty when no directory can be made.
  const std::string& path() {
    if (!exists()) make();
    return path_;
  }
  bool holds(std::string_view path) const {
    return !path_.empty() && path.starts_with(path_) &&
           path.find('/', path_.size()) == std::string_view::npos;
  }

 private:
  bool exists() const;
  void make();
  bool makeUnder(const char* parent);
  void remove() noexcept;

  std::string path_;
  pid_t process_ = 0;
};

// After a fork the directory remains the parent's. Cleaners of /tmp may have taken it away, and
// somebody else may since have made one of that name.
bool TemporaryDirectory::exists() const {
  struct stat status;
  return !path_.empty() && process_ == getpid() &&
         lstat(path_.substr(0, path_.size() - 1).c_str(), &status) == 0 &&
         S_ISDIR(status.st_mode) && status.st_uid == geteuid();
}

void TemporaryDirectory::make() {
  path_.clear();
  const char* chosen = std::getenv("TMPDIR");
  // A relative one would lead elsewhere once the working directory changes.
  if (chosen != nullptr && chosen[0] == '/' && makeUnder(chosen)) return;
  makeUnder("/tmp");
}

bool TemporaryDirectory::makeUnder(const char* parent) {
  // Callers give a buffer of 256 bytes and need room for a file's name behind it.
  constexpr std::size_t longestPath = 230;
  std::string path = std::string(parent) + "/exifkeep-XXXXXX";
  if (path.size() > longestPath) return false;
  path.reserve(path.size() + 1);  // so that nothing can fail once the directory is there
  if (mkdtemp(path.data()) == nullptr) return false;
  path += '/';
  path_.swap(path);
  process_ = getpid();
  return true;
}

void TemporaryDirectory::remove() noexcept {
  if (path_.empty() || process_ != getpid()) return;
  path_.pop_back();
  const int descriptor = open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (descriptor < 0) return;
  if (DIR* entries = fdopendir(descriptor)) {
    while (const dirent* entry = readdir(entries)) unlinkat(descriptor, entry->d_name, 0);
    closedir(entries);
  } else {
    close(descriptor);
  }
  rmdir(path_.c_str());
}

thread_local TemporaryDirectory temporaryDirectory;

}  // namespace

bool isTemporaryPath(std::string_view path) noexcept {
  return temporaryDirectory.holds(path);
}

}  // namespace exifkeep

DWORD GetTempPathA(DWORD size, LPSTR buffer) {
  if (exifkeep::failsNow(exifkeep::PlatformCall::temporaryDirectory)) return 0;
  try {
    const std::string& path = exifkeep::temporaryDirectory.path();
    const DWORD length = static_cast<DWORD>(path.size());
    if (length >= size) return length == 0 ? 0 : length + 1;
    std::memcpy(buffer, path.c_str(), length + 1);
    return length;
  } catch (const std::bad_alloc&) {
    return 0;
  }
}

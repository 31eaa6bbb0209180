// SPDX-License-Identifier: MIT
// Copies one file. The bytes are written to a new file beside the target and renamed at the end, so
// that neither failure nor cancelling can damage an existing target. No shell is run.
#include <fcntl.h>
#include <shell_copy_handler.h>
#include <shellapi.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <string>

#include "open_file.h"
#include "unique_file.h"

namespace exifkeep {
namespace {

std::mutex handlerMutex;
ShellCopyHandler installedHandler;

ShellCopyHandler currentHandler() {
  const std::lock_guard lock(handlerMutex);
  return installedHandler;
}

enum class CopyResult { done, cancelled, failed };

// The new file beside the target, deleted unless it becomes the target.
class PartialCopy {
 public:
  explicit PartialCopy(const std::string& target)
      : made_(createUniqueFile(target.substr(0, target.rfind('/') + 1) + "~cp", 0666)) {}
  ~PartialCopy() {
    if (made_.file) unlink(made_.path.c_str());
  }
  PartialCopy(const PartialCopy&) = delete;
  PartialCopy& operator=(const PartialCopy&) = delete;

  OpenFile* file() const { return made_.file.get(); }
  bool takeRights(const struct stat& source) const;
  bool become(const std::string& target, bool replace, const struct stat& source);

 private:
  UniqueFile made_;
};

// The copy of a private file must be private too.
bool PartialCopy::takeRights(const struct stat& source) const {
  struct stat own;
  return fstat(file()->descriptor(), &own) == 0 &&
         fchmod(file()->descriptor(), own.st_mode & source.st_mode & 0777) == 0;
}

bool PartialCopy::become(const std::string& target, bool replace, const struct stat& source) {
  const timespec times[2] = {source.st_atim, source.st_mtim};
  futimens(file()->descriptor(), times);  // failure is harmless
  if (!file()->sync() || !file()->close()) return false;
  if (!MoveFileExA(made_.path.c_str(), target.c_str(), replace ? MOVEFILE_REPLACE_EXISTING : 0))
    return false;
  made_.file.reset();
  return true;
}

class ShellCopy {
 public:
  explicit ShellCopy(const SHFILEOPSTRUCTA& operation)
      : owner_(operation.hwnd), source_(operation.pFrom), target_(operation.pTo) {}
  CopyResult run();

 private:
  bool mayReplace() const;
  bool goesOn(int64_t done, int64_t total) const;
  CopyResult copyBytes(OpenFile& from, OpenFile& to) const;

  const ShellCopyHandler handler_ = currentHandler();
  const HWND owner_;
  const std::string source_;
  const std::string target_;
};

bool ShellCopy::mayReplace() const {
  return handler_.mayOverwrite &&
         handler_.mayOverwrite(handler_.context, owner_, source_.c_str(), target_.c_str());
}

bool ShellCopy::goesOn(int64_t done, int64_t total) const {
  return !handler_.progress || handler_.progress(handler_.context, owner_, done, total);
}

CopyResult ShellCopy::copyBytes(OpenFile& from, OpenFile& to) const {
  constexpr size_t chunk = 256 * 1024;
  const auto buffer = std::make_unique_for_overwrite<char[]>(chunk);
  size_t count = 0;
  size_t written = 0;
  do {
    if (!goesOn(from.position(), from.size())) return CopyResult::cancelled;
    if (!from.read(buffer.get(), chunk, count)) return CopyResult::failed;
    if (!to.write(buffer.get(), count, written)) return CopyResult::failed;
  } while (count > 0);
  return from.position() == from.size() ? CopyResult::done : CopyResult::failed;
}

CopyResult ShellCopy::run() {
  const auto from = OpenFile::open(source_.c_str(), O_RDONLY, 0);
  struct stat source;
  if (!from || from->size() < 0 || fstat(from->descriptor(), &source) != 0)
    return CopyResult::failed;
  struct stat target;
  const bool replace = lstat(target_.c_str(), &target) == 0;
  if (replace && stat(target_.c_str(), &target) == 0) {
    if (target.st_dev == source.st_dev && target.st_ino == source.st_ino) return CopyResult::done;
    if (!S_ISREG(target.st_mode)) return CopyResult::failed;
  }
  if (replace && !mayReplace()) return CopyResult::cancelled;
  PartialCopy partial(target_);
  if (!partial.file() || !partial.takeRights(source)) return CopyResult::failed;
  if (const CopyResult result = copyBytes(*from, *partial.file()); result != CopyResult::done)
    return result;
  return partial.become(target_, replace, source) ? CopyResult::done : CopyResult::failed;
}

CopyResult runCopy(const SHFILEOPSTRUCTA& operation) {
  try {
    return ShellCopy(operation).run();
  } catch (const std::bad_alloc&) {
    return CopyResult::failed;
  }
}

}  // namespace
}  // namespace exifkeep

int SHFileOperationA(LPSHFILEOPSTRUCTA operation) {
  using exifkeep::CopyResult;
  operation->fAnyOperationsAborted = FALSE;
  const bool isOneFile = operation->pFrom && operation->pTo && operation->pFrom[0] != '\0' &&
                         operation->pFrom[std::strlen(operation->pFrom) + 1] == '\0';
  if (operation->wFunc != FO_COPY || !isOneFile) return ERROR_INVALID_PARAMETER;
  switch (exifkeep::runCopy(*operation)) {
    case CopyResult::done: return ERROR_SUCCESS;
    case CopyResult::cancelled: operation->fAnyOperationsAborted = TRUE; return ERROR_CANCELLED;
    case CopyResult::failed: break;
  }
  return ERROR_WRITE_FAULT;
}

void SetShellCopyHandler(const ShellCopyHandler& handler) {
  const std::lock_guard lock(exifkeep::handlerMutex);
  exifkeep::installedHandler = handler;
}

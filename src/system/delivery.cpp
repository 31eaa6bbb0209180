// SPDX-License-Identifier: MIT
#include "system/delivery.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "system/global_block.h"
#include "system/path.h"
#include "system/random_name.h"
#include "system/temporary_picture.h"

namespace exifkeep {

namespace {

// Copies bytes between files. All memory is allocated beforehand: once the copying has begun, only
// the files can fail.
class Copier {
 public:
  bool isReady() const { return lock_.bytes() != nullptr; }

  // Between the same positions of both files.
  bool copy(DiskFile& from, DiskFile& to, uint64_t begin, uint64_t end) {
    for (uint64_t at = begin; at < end;) {
      const auto step = static_cast<size_t>(std::min<uint64_t>(end - at, pieceSize));
      if (from.readAt(at, first(), step) != step || !to.writeAt(at, first(), step)) return false;
      at += step;
    }
    return true;
  }

  // Makes `to` equal to `from`, writing only what differs.
  bool restore(DiskFile& from, DiskFile& to) {
    if (!to.setSize(from.size())) return false;
    for (uint64_t at = 0; at < from.size();) {
      const auto step = static_cast<size_t>(std::min<uint64_t>(from.size() - at, pieceSize));
      if (from.readAt(at, first(), step) != step) return false;
      const bool isSame =
          to.readAt(at, second(), step) == step && std::memcmp(first(), second(), step) == 0;
      if (!isSame && !to.writeAt(at, first(), step)) return false;
      at += step;
    }
    return to.flush();
  }

 private:
  static constexpr size_t pieceSize = 1 << 22;
  uint8_t* first() { return lock_.bytes(); }
  uint8_t* second() { return lock_.bytes() + pieceSize; }

  GlobalBlock block_{2 * pieceSize};
  BlockLock lock_{block_};
};

enum class Outcome { done, failed, refused };

// Whether creating or renaming a file, or finding its path, will always be refused here or only
// failed this time. The last two are what virtual drives say that Windows has no path for.
Outcome outcomeOf(DWORD error) {
  switch (error) {
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_BUSY:
    case ERROR_NOT_SAME_DEVICE:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_INVALID_FUNCTION:
    case ERROR_UNRECOGNIZED_VOLUME: return Outcome::refused;
    default: return Outcome::failed;
  }
}

// The new file beside the destination. Unless it replaces the destination, it is deleted with this
// object. It is opened once and used through its handle: where others may write to the folder, its
// name may soon belong to another file.
class Sibling {
 public:
  Sibling(const std::string& target, const DiskFile* old)
      : path_(randomName(std::string(directoryOf(target)) + "~exifkeep")),
        file_(DiskFile::createNew(path_.c_str(), old)),
        exists_(file_.isOpen()) {}
  ~Sibling() {
    file_.close();
    if (exists_) DeleteFileA(path_.c_str());
  }
  Sibling(const Sibling&) = delete;
  Sibling& operator=(const Sibling&) = delete;

  DiskFile& file() { return file_; }

  // Windows may fail halfway and leave the old file under the backup's name; without a backup the
  // file would be lost. The POSIX stand-in makes none.
  bool replace(const std::string& target) {
    const std::string backup = randomName(std::string(directoryOf(target)) + "~exifkeep");
    const BOOL isReplaced = ReplaceFileA(target.c_str(), path_.c_str(), backup.c_str(),
                                         REPLACEFILE_WRITE_THROUGH, nullptr, nullptr);
    const DWORD error = GetLastError();
    if (isReplaced)
      DeleteFileA(backup.c_str());
    else
      MoveFileExA(backup.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH);
    SetLastError(error);
    return renamed(isReplaced);
  }
  bool become(const std::string& target) {
    return renamed(MoveFileExA(path_.c_str(), target.c_str(),
                               MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
  }

 private:
  bool renamed(BOOL succeeded) {
    exists_ = !succeeded;
    return succeeded;
  }

  std::string path_;
  DiskFile file_;
  bool exists_;
};

bool writePieces(DiskFile& file, std::span<const Piece> pieces) {
  return std::ranges::all_of(pieces, [&file](const Piece& piece) {
    return piece.writer ? piece.writer->appendTo(file)
                        : file.writeAt(file.size(), piece.bytes.data(), piece.bytes.size());
  });
}

// Replaces `target` by a new file. `old`, if given, is the existing one.
Outcome replace(const std::string& target, const DiskFile* old, std::span<const Piece> pieces) {
  Sibling sibling(target, old);
  DiskFile& file = sibling.file();
  if (!file.isOpen()) return outcomeOf(file.error());
  if (!writePieces(file, pieces) || !file.flush() || !file.close()) return Outcome::failed;
  const bool isDone = old ? sibling.replace(target) : sibling.become(target);
  return isDone ? Outcome::done : outcomeOf(GetLastError());
}

// Writes what extends the destination first: if the disk is full, this fails while the old bytes
// are still there.
bool writeOver(DiskFile& destination, DiskFile& whole, Copier& copier) {
  const uint64_t shared = std::min(destination.size(), whole.size());
  return copier.copy(whole, destination, shared, whole.size()) && destination.flush() &&
         copier.copy(whole, destination, 0, shared) && destination.setSize(whole.size()) &&
         destination.flush();
}

// Rewrites the destination in place, with the complete new file and a copy of the old one in the
// temporary folder. If even restoring the old bytes fails, that copy is kept, as no other is left.
Outcome overwrite(DiskFile& destination, const char* name, std::span<const Piece> pieces) {
  TemporaryPicture newPlace(fileNameOf(name)), oldPlace(fileNameOf(name));
  DiskFile whole = DiskFile::createNew(newPlace.path().c_str());
  DiskFile kept = DiskFile::createNew(oldPlace.path().c_str());
  Copier copier;
  if (!copier.isReady() || !writePieces(whole, pieces) || !whole.flush()) return Outcome::failed;
  if (!copier.copy(destination, kept, 0, destination.size()) || !kept.flush())
    return Outcome::failed;
  oldPlace.settle();
  if (writeOver(destination, whole, copier)) return Outcome::done;
  if (!copier.restore(kept, destination)) oldPlace.keep();
  return Outcome::failed;
}

}  // namespace

bool deliver(const char* destination, std::span<const Piece> pieces) {
  DiskFile old = DiskFile::openForWriting(destination);
  if (!old.isOpen()) {
    const bool isNew = old.error() == ERROR_FILE_NOT_FOUND &&
                       GetFileAttributesA(destination) == INVALID_FILE_ATTRIBUTES;
    return isNew && replace(destination, nullptr, pieces) == Outcome::done;
  }
  const std::string target = old.finalPath();
  if (old.error() != ERROR_SUCCESS) return false;
  Outcome outcome = target.empty() ? outcomeOf(GetLastError()) : replace(target, &old, pieces);
  if (outcome == Outcome::refused) outcome = overwrite(old, destination, pieces);
  return outcome == Outcome::done;
}

}  // namespace exifkeep

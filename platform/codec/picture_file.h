// One picture file while it is read or written, with its own position: the three codec libraries
// get all their bytes through it. Only regular files open. Nothing is buffered here. Made of the
// system's own calls, in platform/posix and platform/windows.
#pragma once

#include <cstddef>
#include <cstdint>

namespace exifkeep {

class PictureFile {
 public:
  PictureFile(const PictureFile&) = delete;
  PictureFile& operator=(const PictureFile&) = delete;
  ~PictureFile();

  bool isOpen() const noexcept { return file_ != -1; }
  uint64_t size() const noexcept { return size_; }
  uint64_t position() const noexcept { return position_; }
  void moveTo(uint64_t position) noexcept { position_ = position; }

  // Reads at the position; fewer bytes than asked for only at the end of the file or on an error.
  size_t read(void* bytes, size_t count) noexcept;
  // Whether any reading or writing failed so far; the libraries pass over some errors.
  bool hasFailed() const noexcept { return failed_; }

 protected:
  PictureFile() noexcept = default;
  enum class Purpose { reading, writing };
  bool open(const char* path, Purpose purpose) noexcept;

  intptr_t file_ = -1;  // a descriptor; on Windows a handle
  uint64_t size_ = 0;
  uint64_t position_ = 0;
  bool failed_ = false;
};

// An existing file.
class PictureReading : public PictureFile {
 public:
  explicit PictureReading(const char* path) noexcept;
};

// A new file, or an existing one that is emptied. Unless finish() returned true, the file is
// removed again on destruction: nothing half-written stays.
class PictureWriting : public PictureFile {
 public:
  explicit PictureWriting(const char* path) noexcept;
  ~PictureWriting();

  // Writes all bytes at the position.
  bool write(const void* bytes, size_t count) noexcept;
  // Closes the file; false when that, or any write before, failed.
  bool finish() noexcept;

 private:
  const char* path_;
};

}  // namespace exifkeep

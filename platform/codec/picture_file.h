// A picture file that is being read or written, through which the three codec libraries do all
// input and output. Has its own position and no buffer. Only regular files can be opened.
// Implemented in platform/posix and platform/windows.
#pragma once

#include <cstddef>
#include <cstdint>

namespace exifkeep {

class PictureFile {
 public:
  PictureFile(const PictureFile&) = delete;
  PictureFile& operator=(const PictureFile&) = delete;
  ~PictureFile();

  bool isOpen() const { return file_ != -1; }
  uint64_t size() const { return size_; }
  uint64_t position() const { return position_; }
  void moveTo(uint64_t position) { position_ = position; }

  // Reads at the position. Returns fewer bytes only at the end of the file or on an error.
  size_t read(void* bytes, size_t count);
  // Whether any read or write has failed; the libraries ignore some errors.
  bool hasFailed() const { return failed_; }

 protected:
  PictureFile() = default;
  enum class Purpose { reading, writing };
  bool open(const char* path, Purpose purpose);

  intptr_t file_ = -1;  // a descriptor, or on Windows a handle
  uint64_t size_ = 0;
  uint64_t position_ = 0;
  bool failed_ = false;
};

// An existing file.
class PictureReading : public PictureFile {
 public:
  explicit PictureReading(const char* path);
};

// A new file, or an existing one that is truncated. The destructor deletes the file unless finish()
// has returned true.
class PictureWriting : public PictureFile {
 public:
  explicit PictureWriting(const char* path);
  ~PictureWriting();

  // Writes all bytes at the position.
  bool write(const void* bytes, size_t count);
  // Closes the file. False if this or any previous write failed.
  bool finish();

 private:
  const char* path_;
};

}  // namespace exifkeep

// A picture file in the system's temporary directory, deleted with its object. The name is fixed;
// the directory is the calling thread's own, so calls on other threads do not meet it.
#pragma once

#include <string>

namespace exifkeep {

class TemporaryPicture {
 public:
  // Deletes what an earlier call may have left under the name, so that a picture that cannot be
  // written is missing, never stale.
  explicit TemporaryPicture(const char* fileName);
  ~TemporaryPicture();
  TemporaryPicture(const TemporaryPicture&) = delete;
  TemporaryPicture& operator=(const TemporaryPicture&) = delete;

  // Empty when there is no temporary directory.
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

inline constexpr const char* temporaryJpegName = "~orvalletemp.jpg";
inline constexpr const char* temporaryTiffName = "~orvalletemp.tif";

}  // namespace exifkeep

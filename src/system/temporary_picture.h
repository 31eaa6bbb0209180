// A picture file in a private folder of its own below the system's temporary folder. Both go with
// the object, so that calls on other threads and in other processes do not meet it, and nothing
// stays behind.
#pragma once

#include <string>
#include <string_view>

namespace exifkeep {

class TemporaryPicture {
 public:
  // Makes the folder, not the file.
  explicit TemporaryPicture(std::string_view fileName);
  ~TemporaryPicture();
  TemporaryPicture(const TemporaryPicture&) = delete;
  TemporaryPicture& operator=(const TemporaryPicture&) = delete;

  // Empty when the folder could not be made; GetLastError then says why.
  const std::string& path() const { return path_; }
  // Brings the names of folder and file on disk, as flushing the file does with its bytes.
  void settle() const;
  // Leaves the file where it is.
  void keep() { isKept_ = true; }

 private:
  std::string folder_;
  std::string path_;
  bool isKept_ = false;
};

inline constexpr const char* temporaryJpegName = "~orvalletemp.jpg";
inline constexpr const char* temporaryTiffName = "~orvalletemp.tif";

}  // namespace exifkeep

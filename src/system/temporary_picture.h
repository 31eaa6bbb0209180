// SPDX-License-Identifier: MIT
// A picture file in a private folder of its own in the system's temporary folder, so that calls on
// other threads and in other processes do not interfere. Both are deleted with the object.
#pragma once

#include <string>
#include <string_view>

namespace exifkeep {

class TemporaryPicture {
 public:
  // Creates the folder but not the file.
  explicit TemporaryPicture(std::string_view fileName);
  ~TemporaryPicture();
  TemporaryPicture(const TemporaryPicture&) = delete;
  TemporaryPicture& operator=(const TemporaryPicture&) = delete;

  // Empty if the folder could not be created; GetLastError then gives the reason.
  const std::string& path() const { return path_; }
  // Waits until the names of folder and file are on disk, as a flush does for the file's bytes.
  void settle() const;
  // Does not delete the file after all.
  void keep() { isKept_ = true; }

 private:
  std::string folder_;
  std::string path_;
  bool isKept_ = false;
};

inline constexpr const char* temporaryJpegName = "~orvalletemp.jpg";
inline constexpr const char* temporaryTiffName = "~orvalletemp.tif";

}  // namespace exifkeep

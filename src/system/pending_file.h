// A file that takes its destination's place whole or not at all. A save works on a temporary file
// beside the destination and commits it when everything is written: synced, then renamed over the
// destination. Until then, and after any failure, the destination is what it was.
//
// Where that is not possible, because the directory admits no new file or the destination is
// nothing that a rename could replace, the save works on the destination itself.
#pragma once

#include <string>
#include <string_view>

namespace exifkeep {

class PendingFile {
 public:
  explicit PendingFile(const char* destination);
  // Not committed: the temporary file is deleted.
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  // The file to write. It has the extension of the destination as it was named, also when that is a
  // link to a file of another name.
  const char* path() const { return path_.c_str(); }

  // Gives the file its destination's name. An existing destination's permissions are kept and a
  // symbolic link is followed, not replaced. False, and the destination untouched, on failure.
  bool commit();

 private:
  void chooseTarget();
  bool reserve(std::string_view extension);
  bool isInPlace() const { return path_ == target_; }

  std::string target_;  // the destination, behind any link
  std::string path_;
  bool replaces_ = false;
  bool isCommitted_ = false;
};

}  // namespace exifkeep

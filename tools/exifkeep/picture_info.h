// The metadata of one picture as the library lists it, or the reason why there is none.
#pragma once

#include <exifkeep/exifkeep.h>

#include <string>

#include "answers.h"

namespace program {

class PictureInfo {
 public:
  // In the language and code page selected now.
  explicit PictureInfo(const std::string& path) : isExif_(GetExifInfo(path.c_str(), &items_) != 0) {
    if (!isExif_) refusal_ = explainRefusal(path);
  }
  ~PictureInfo() { FreeInfoList(&items_); }
  PictureInfo(const PictureInfo&) = delete;
  PictureInfo& operator=(const PictureInfo&) = delete;

  bool isExif() const { return isExif_; }
  const FileRefusal& refusal() const { return refusal_; }

  template <typename Visit>
  void forEachItem(Visit visit) const {
    for (POSITION place = items_.GetHeadPosition(); place != nullptr;) {
      const auto* item = static_cast<const exifkeep::InfoItem*>(items_.GetNext(place));
      visit(static_cast<const char*>(item->label), static_cast<const char*>(item->value));
    }
  }

 private:
  exifkeep::InfoList items_;
  bool isExif_;
  FileRefusal refusal_{ExitStatus::ok, ""};
};

}  // namespace program

// SPDX-License-Identifier: MIT
// The metadata of a picture, or the reason why there is none.
#pragma once

#include <exifkeep/field_list.h>

#include <atomic>
#include <cstdlib>
#include <string>
#include <vector>

#include "answers.h"

namespace program {

// Whether the tag, a standard name or a number, is that of the field.
inline bool isTagOf(const std::string& tag, const exifkeep::InfoField& field) {
  char* end;
  const unsigned long number = std::strtoul(tag.c_str(), &end, 0);
  return *end == '\0' ? number == field.tag : lstrcmpiA(tag.c_str(), field.name) == 0;
}

// A selection of fields. Several threads may use it.
struct FieldChoice {
  std::vector<std::string> tags;  // empty: all
  bool gps = false;
  mutable std::vector<std::atomic<bool>> found;  // for each tag, whether any picture has it

  bool wants(const exifkeep::InfoField& field) const {
    bool wanted = tags.empty();
    for (size_t i = 0; i < tags.size(); ++i)
      if (isTagOf(tags[i], field)) found[i] = wanted = true;
    return wanted;
  }
};

class PictureInfo {
 public:
  // In the selected language and code page. REQUIRES: `choice` outlives this object.
  explicit PictureInfo(const std::string& path, const FieldChoice& choice = everything)
      : choice_(choice) {
    fields_.withGps = choice.gps;
    isExif_ = GetExifInfo(path.c_str(), &fields_) != 0;
    if (!isExif_) refusal_ = explainRefusal(path);
  }

  bool isExif() const { return isExif_; }
  const FileRefusal& refusal() const { return refusal_; }

  // Calls `visit` with each selected InfoField.
  template <typename Visit>
  void forEachItem(Visit visit) const {
    fields_.forEach([&](const exifkeep::InfoField& field) {
      if (choice_.wants(field)) visit(field);
    });
  }

 private:
  inline static const FieldChoice everything;

  const FieldChoice& choice_;
  exifkeep::FieldList fields_;
  bool isExif_;
  FileRefusal refusal_{ExitStatus::ok, "", nullptr};
};

}  // namespace program

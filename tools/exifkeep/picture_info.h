// SPDX-License-Identifier: MIT
// The metadata of a picture, or the reason why there is none.
#pragma once

#include <exifkeep/field_list.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "answers.h"

namespace program {

// A selection of fields.
struct FieldChoice {
  std::vector<std::string> tags;  // standard names or numbers; empty: all
  bool gps = false;

  bool wants(const exifkeep::InfoField& field) const {
    const auto is = [&field](const std::string& tag) {
      char* end;
      const unsigned long number = std::strtoul(tag.c_str(), &end, 0);
      return *end == '\0' ? number == field.tag : lstrcmpiA(tag.c_str(), field.name) == 0;
    };
    return tags.empty() || std::any_of(tags.begin(), tags.end(), is);
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

// SPDX-License-Identifier: MIT
// Two pictures with metadata in the test's own folder.
#pragma once

#include <exifkeep/exifkeep.h>

#include "codec/picture_fixture.h"

namespace exifkeep::test {

class SavedPictures : public ScratchTest {
 protected:
  static constexpr unsigned height = 16, oldWidth = 24, newWidth = 40;
  using Files = std::map<std::string, std::string>;  // names and bytes; folders have none

  SavedPictures() {
    for (const std::string name : {"source.jpg", "source.tif"}) {
      PRaster picture = makePicture(oldWidth);
      EXPECT_EQ(save(path(name), picture), 1);
      EXPECT_EQ(AddAudio(path(name).data(), "an older program", &picture, nullptr), 1);
    }
    std::filesystem::create_directory(path("tmp"));
    std::filesystem::permissions(path("tmp"), std::filesystem::perms::all);
    setVariable(temporaryVariable, path("tmp"));
    originals_ = files();
  }

  static PRaster makePicture(unsigned width) { return patterned(24, width, height); }
  // 0 if the file is not a picture of the right height.
  static unsigned widthOf(const std::string& path) {
    const std::optional<PRaster> image = load(path);
    return image && image->height() == height ? image->width() : 0;
  }
  Files files() const {
    Files all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path("")))
      all[entry.path().lexically_relative(path("")).string()] =
          entry.is_directory() ? "" : readFile(entry.path().string());
    return all;
  }
  void restore() const {
    // Files too: what has their names may be a link.
    for (const auto& [name, bytes] : files())
      if (!bytes.empty() || !originals_.contains(name)) std::filesystem::remove_all(path(name));
    for (const auto& [name, bytes] : originals_)
      if (!bytes.empty()) writeFile(path(name), bytes);
  }

  Files originals_;
};

}  // namespace exifkeep::test

// Pictures with and without metadata in a folder of the test's own.
#pragma once

#include <exifkeep/exifkeep.h>

#include "codec/picture_fixture.h"

namespace exifkeep::test {

class SavedPictures : public ScratchTest {
 protected:
  static constexpr unsigned height = 16;

  static PRaster makePicture(unsigned width) { return patterned(24, width, height); }
  void savePlain(const std::string& name, unsigned width) const {
    PRaster picture = makePicture(width);
    EXPECT_EQ(save(path(name), picture), 1);
  }
  void saveWithMetadata(const std::string& name, unsigned width) const {
    savePlain(name, width);
    PRaster picture = makePicture(width);
    EXPECT_EQ(AddAudio(path(name).data(), "an older program", &picture, nullptr), 1);
  }
  // 0 when the file holds no picture of the right height.
  static unsigned widthOf(const std::string& path) {
    const std::optional<PRaster> image = load(path);
    return image && image->height() == height ? image->width() : 0;
  }
};

}  // namespace exifkeep::test

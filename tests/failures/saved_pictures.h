// Pictures with and without metadata in a folder of the test's own.
#pragma once

#include <exifkeep/exifkeep.h>
#include <platform/scratch.h>

#include <cstring>

#include "imageio/image_codec_bridge.h"

namespace exifkeep::test {

class SavedPictures : public ScratchTest {
 protected:
  static constexpr unsigned height = 16;

  static PRaster makePicture(unsigned width) {
    PRaster picture;
    EXPECT_EQ(picture.CreateImage(PRaster::type24Bit, width, height, 0, 0, 2835, 2835), 1);
    for (unsigned y = 0; y < height; ++y) std::memset(picture.row(y), int(width + y), width * 3);
    return picture;
  }
  void savePlain(const std::string& name, unsigned width) const {
    PRaster picture = makePicture(width);
    EXPECT_EQ(SaveFile("none", path(name).c_str(), &picture, nullptr), 1);
  }
  void saveWithMetadata(const std::string& name, unsigned width) const {
    savePlain(name, width);
    PRaster picture = makePicture(width);
    EXPECT_EQ(AddAudio(path(name).data(), "an older program", &picture, nullptr), 1);
  }
  // 0 when the file holds no picture of the right height.
  static unsigned widthOf(const std::string& path) {
    const auto image = ImageCodecBridge().loadImageFile(path.c_str());
    return image && image->height() == height ? image->width() : 0;
  }
};

}  // namespace exifkeep::test

// Opening a picture: its image, its thumbnail, and both.
#include <exifkeep/exifkeep.h>

#include "input.h"

using namespace exifkeep::fuzz;

namespace {

// Whatever was decoded can be used: every pixel is looked at.
void use(const PRaster& image) {
  if (image.IsEmpty()) return;
  PRaster small;
  require(small.CreateImage(image.GetImageType(), 3, 2) == 1, "an image of no type");
  require(small.RescaleImage(image) == 1, "an image that cannot be scaled");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const PictureInput input(data, size);
  const char* path = input.path().c_str();
  const int isExif = IsExifFile(path);
  PRaster image, thumbnail;
  if (input.choice() % 2 == 0) {
    require(OpenExifFile(path, &image, &thumbnail) == isExif, "opened, and no Exif file");
  } else {
    require(OpenExifFile(path, nullptr, &thumbnail) == isExif, "thumbnail of no Exif file");
    require(OpenExifFile(path, &image, nullptr) == isExif, "image of no Exif file");
  }
  use(image);
  use(thumbnail);
  return 0;
}

// rotate_and_save: turns an Exif picture clockwise by 90 degrees and saves it with its metadata.
//
//   rotate_and_save SOURCE DESTINATION
//
// Shows how a host opens a picture, works on its pixels, and saves the result with the metadata of
// the picture it came from.
#include <exifkeep/exifkeep.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>

namespace {

// What was done to the picture: with this code a save adjusts the metadata to it. Orientation
// becomes 1, the pixel dimensions those of the saved image, and the subject's coordinates change
// places.
constexpr int turned = 2;

// Levels are colours only together with their palette. Pictures of 24 bits have none.
void copyPalette(const PRaster& from, PRaster& to) {
  if (!from.palette()) return;
  std::copy_n(from.palette(), size_t{1} << from.bitsPerPixel(), to.palette());
}

// Makes `to` an image that shows `from` turned clockwise. False when there is no memory for it.
bool turnClockwise(const PRaster& from, PRaster& to) {
  const unsigned width = from.GetImageHeight();
  const unsigned height = from.GetImageWidth();
  // The resolution turns with the picture: across becomes down. The other arguments of CreateImage
  // are not used or need no value here.
  if (!to.CreateImage(from.GetImageType(), width, height, 0, 0, from.GetDpmY(), from.GetDpmX()))
    return false;
  copyPalette(from, to);
  // Row 0 is at the top. GetPixel and SetPixel do for every depth; a program in a hurry works on
  // PRaster::row instead.
  for (unsigned y = 0; y < height; ++y)
    for (unsigned x = 0; x < width; ++x)
      to.SetPixel(static_cast<int>(x), static_cast<int>(y),
                  from.GetPixel(static_cast<int>(y), static_cast<int>(width - 1 - x)));
  return true;
}

// Pixels come as they are stored: the Orientation of the metadata is not applied to them. A viewer
// that shows pictures upright would do so before it turns them.
bool open(const char* path, PRaster& image, PRaster& thumbnail) {
  if (!OpenExifFile(path, &image, &thumbnail)) {
    std::fprintf(stderr, "%s: not an Exif picture, or it cannot be opened\n", path);
    return false;
  }
  // The result tells about the metadata only. Whether the pixels could be decoded shows here.
  if (image.IsEmpty()) {
    std::fprintf(stderr, "%s: the picture cannot be decoded\n", path);
    return false;
  }
  return true;
}

bool turnAndSave(const char* source, const char* destination) {
  PRaster image, thumbnail, turnedImage, turnedThumbnail;
  if (!open(source, image, thumbnail)) return false;
  if (!turnClockwise(image, turnedImage)) {
    std::fprintf(stderr, "%s: not enough memory\n", source);
    return false;
  }
  // A picture without a thumbnail leaves `thumbnail` empty. An empty one, like a null pointer, asks
  // the library to make the new one from the image.
  if (!thumbnail.IsEmpty()) turnClockwise(thumbnail, turnedThumbnail);

  // Destination and source may be the same file: it is replaced whole when all is written, and a
  // save that fails leaves it as it was. Metadata goes from JPEG to JPEG and from TIFF to TIFF; to
  // any other format the image is saved without.
  if (!SaveProcessFile(source, destination, turned, &turnedImage, &turnedThumbnail)) {
    std::fprintf(stderr, "%s: cannot be written\n", destination);
    return false;
  }
  if (!IsExifFile(destination))
    std::fprintf(stderr, "%s: saved without the metadata\n", destination);
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::fprintf(stderr, "usage: rotate_and_save SOURCE DESTINATION\n");
    return 2;
  }
  return turnAndSave(arguments[1], arguments[2]) ? 0 : 1;
}

// SPDX-License-Identifier: MIT
// rotate_and_save: rotates an Exif picture clockwise by 90 degrees and saves it with its metadata.
//
//   rotate_and_save SOURCE DESTINATION
//
// Shows how a host opens a picture, processes its pixels, and saves the result with the original
// metadata.
#include <exifkeep/exifkeep.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>

namespace {

// The kind of processing, to which a save adjusts the metadata: Orientation becomes 1, the pixel
// dimensions are those of the saved image, and the subject's coordinates are swapped.
constexpr int turned = 2;

// Levels are colours only through their palette. Pictures of 24 bits have none.
void copyPalette(const PRaster& from, PRaster& to) {
  if (!from.palette()) return;
  std::copy_n(from.palette(), size_t{1} << from.bitsPerPixel(), to.palette());
}

// Makes `to` a copy of `from` rotated clockwise. False if memory runs out.
bool turnClockwise(const PRaster& from, PRaster& to) {
  const unsigned width = from.GetImageHeight();
  const unsigned height = from.GetImageWidth();
  // The resolution is rotated with the picture: across becomes down. The other arguments of
  // CreateImage are not used or not needed here.
  if (!to.CreateImage(from.GetImageType(), width, height, 0, 0, from.GetDpmY(), from.GetDpmX()))
    return false;
  copyPalette(from, to);
  // Row 0 is at the top. GetPixel and SetPixel work for every depth; PRaster::row is faster.
  for (unsigned y = 0; y < height; ++y)
    for (unsigned x = 0; x < width; ++x)
      to.SetPixel(static_cast<int>(x), static_cast<int>(y),
                  from.GetPixel(static_cast<int>(y), static_cast<int>(width - 1 - x)));
  return true;
}

// Pixels are returned as stored: the Orientation of the metadata is not applied. A viewer that
// shows pictures upright would apply it first.
bool open(const char* path, PRaster& image, PRaster& thumbnail) {
  if (!OpenExifFile(path, &image, &thumbnail)) {
    std::fprintf(stderr, "%s: not an Exif picture, or it cannot be opened\n", path);
    return false;
  }
  // The result of OpenExifFile is only about the metadata; this checks whether the pixels could be
  // decoded.
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
  // If the picture has no thumbnail, `thumbnail` is empty. For an empty one or a null pointer, the
  // library makes the thumbnail from the image.
  if (!thumbnail.IsEmpty()) turnClockwise(thumbnail, turnedThumbnail);

  // Destination and source may be the same file: saves are atomic. Metadata is saved from JPEG to
  // JPEG and from TIFF to TIFF, but not to any other format.
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

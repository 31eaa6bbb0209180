// SPDX-License-Identifier: MIT
#include "open/open_picture.h"

#include "open/load_thumbnail.h"

namespace exifkeep {

namespace {

// The old image is freed before the new one is decoded, so that only one is in memory at a time.
// The pixels are moved, not copied.
void loadMainImage(const ImageCodecBridge& codec, const char* path, PRaster& image) {
  if (!image.IsEmpty()) image.DeleteImage(1);
  if (const auto decoded = codec.loadImageFile(path)) image.Attach(decoded->Detach());
}

}  // namespace

bool openPicture(ExifReader& reader, const char* path, PRaster* image, PRaster* thumbnail) {
  if (!hasExifExtension(path)) return false;
  ExifFile file(path);
  if (!reader.probeFile(file)) return false;
  if (image) loadMainImage(reader.codec(), path, *image);
  if (thumbnail) loadThumbnail(reader, file, *thumbnail);
  return true;
}

}  // namespace exifkeep

// The thumbnail of a saved picture: the host's own, or the picture scaled into 160 x 120 pixels
// with its proportions kept, centred on a uniform background.
#pragma once

#include <praster.h>

#include <cstdint>
#include <optional>

#include "imageio/image_codec_bridge.h"
#include "system/temporary_picture.h"

namespace exifkeep {

inline constexpr unsigned thumbnailWidth = 160;
inline constexpr unsigned thumbnailHeight = 120;

// Makes `thumbnail` a 160 x 120 image of the source's type that shows the source. False when one of
// them is missing, the source is empty, or memory runs out.
bool makeThumbnail(const PRaster* source, PRaster* thumbnail, uint64_t fillColour);

// Fills the thumbnail from the source: scaled to fill it when the proportions agree (also when the
// source is smaller), else unscaled when it fits, else scaled down to fit; centred.
bool fitIntoThumbnail(const PRaster& source, PRaster& thumbnail, uint64_t fillColour);

// Clears the target and copies the source into its middle. A fill colour of 0 is black in palette
// images too.
void centerImage(const PRaster& source, PRaster& target, uint64_t fillColour);

// The thumbnail as the codec writes it to a temporary file, which is gone with the object.
class ThumbnailFile {
 public:
  // The name's extension selects the format.
  explicit ThumbnailFile(const char* name) : name_(name) {}

  // Saves the host's thumbnail, when there is one and it is not empty, at its own size; else one
  // made of the picture. False when memory or room for the file ran out: the metadata has to fail
  // then, or a picture would lose its thumbnail for want of something that passes.
  bool write(const ImageCodecBridge& codec, const PRaster& picture, PRaster* hostThumbnail);

  // Whether the picture gets a thumbnail directory. A host's thumbnail counts as written whatever
  // its save reported: intended, the missing file then fails the whole metadata.
  bool isWritten() const { return isWritten_; }
  // REQUIRES: write was called.
  const char* path() const { return file_->path().c_str(); }
  unsigned width() const { return width_; }
  unsigned height() const { return height_; }

 private:
  bool save(const ImageCodecBridge& codec, PRaster& image);

  const char* name_;
  std::optional<TemporaryPicture> file_;
  bool isWritten_ = false;
  unsigned width_ = 0;
  unsigned height_ = 0;
};

}  // namespace exifkeep

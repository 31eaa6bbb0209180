// SPDX-License-Identifier: MIT
// The thumbnail of a saved picture: the host's own, or the picture scaled to fit 160 x 120 pixels
// and centred on black.
#pragma once

#include <praster.h>

#include <cstdint>
#include <optional>

#include "imageio/image_codec_bridge.h"
#include "write/encoded_picture.h"

namespace exifkeep {

inline constexpr unsigned thumbnailWidth = 160;
inline constexpr unsigned thumbnailHeight = 120;

// Makes `thumbnail` a 160 x 120 image of the source's type that shows the source. False when the
// source is empty or memory runs out.
bool makeThumbnail(const PRaster& source, PRaster& thumbnail);

// Fills the thumbnail from the source: scaled to fill it when the proportions agree (even if the
// source is smaller), else unscaled when it fits, else scaled down to fit. The source is centred.
bool fitIntoThumbnail(const PRaster& source, PRaster& thumbnail);

// Copies the source into the middle of the target and makes the rest black. REQUIRES: images of
// the same type, the source no larger than the target.
void centerImage(const PRaster& source, PRaster& target);

// A thumbnail encoded by the codec.
class EncodedThumbnail {
 public:
  // The extension of `name` selects the format.
  explicit EncodedThumbnail(const char* name) : name_(name) {}

  // Encodes the host's thumbnail at its own size if it is given and not empty, or else one made
  // from the picture. False if memory runs out. The save must fail then: a picture should not lose
  // its thumbnail because of a temporary condition.
  bool encode(const ImageCodecBridge& codec, const PRaster& picture, PRaster* hostThumbnail);

  // Whether the picture gets a thumbnail directory. A host's thumbnail counts even if encoding it
  // failed. Intended: the missing file then makes the whole save fail.
  bool isTaken() const { return isTaken_; }
  // REQUIRES: encode was called.
  const EncodedPicture& file() const { return *file_; }
  unsigned width() const { return width_; }
  unsigned height() const { return height_; }

 private:
  bool encode(const ImageCodecBridge& codec, PRaster& image);

  const char* name_;
  std::optional<EncodedPicture> file_;
  bool isTaken_ = false;
  unsigned width_ = 0;
  unsigned height_ = 0;
};

}  // namespace exifkeep

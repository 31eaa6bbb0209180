// A picture as the codec encodes it: a temporary file, which is gone with the object. The codec
// never gets to write a destination itself.
#pragma once

#include <praster.h>

#include "imageio/image_codec_bridge.h"
#include "system/temporary_picture.h"

namespace exifkeep {

class EncodedPicture {
 public:
  // In the format that the destination's extension names. One that the codec cannot write shows its
  // message box.
  EncodedPicture(const ImageCodecBridge& codec, PRaster& picture, const char* destination);

  // A path at which no file is when the picture could not be encoded.
  const char* path() const { return isEncoded_ ? file_.path().c_str() : ""; }

 private:
  TemporaryPicture file_;
  bool isEncoded_;
};

}  // namespace exifkeep

// A picture encoded by the codec into a temporary file, which is deleted with the object. The codec
// never writes to a destination itself.
#pragma once

#include <praster.h>

#include "imageio/image_codec_bridge.h"
#include "system/temporary_picture.h"

namespace exifkeep {

class EncodedPicture {
 public:
  // The destination's extension selects the format. If the codec cannot write that format, the
  // bridge shows its message box.
  EncodedPicture(const ImageCodecBridge& codec, PRaster& picture, const char* destination);

  // A path that cannot be opened if encoding failed.
  const char* path() const { return isEncoded_ ? file_.path().c_str() : ""; }

 private:
  TemporaryPicture file_;
  bool isEncoded_;
};

}  // namespace exifkeep

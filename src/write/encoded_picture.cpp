#include "write/encoded_picture.h"

#include <string>

#include "system/path.h"

namespace exifkeep {

namespace {

std::string nameFor(std::string_view destination) {
  std::string name = "picture";
  if (hasExtension(destination)) name.append(".").append(extensionOf(destination));
  return name;
}

}  // namespace

EncodedPicture::EncodedPicture(const ImageCodecBridge& codec, PRaster& picture,
                               const char* destination)
    : file_(nameFor(destination)),
      isEncoded_(!file_.path().empty() && codec.saveImageFile(file_.path().c_str(), picture)) {}

}  // namespace exifkeep

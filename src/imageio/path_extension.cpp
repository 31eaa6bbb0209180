#include "imageio/path_extension.h"

#include <windows.h>

#include <initializer_list>
#include <string>

namespace exifkeep {

namespace {

bool hasExtension(std::string_view path, std::initializer_list<const char*> extensions) {
  const std::string extension(extensionOf(path));
  for (const char* known : extensions)
    if (lstrcmpiA(extension.c_str(), known) == 0) return true;
  return false;
}

}  // namespace

bool isJpegName(std::string_view path) {
  return hasExtension(path, {"jpg", "jpeg", "jpe"});
}

bool isTiffName(std::string_view path) {
  return hasExtension(path, {"tif", "tiff"});
}

}  // namespace exifkeep

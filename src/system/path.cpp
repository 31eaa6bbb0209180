// SPDX-License-Identifier: MIT
#include "system/path.h"

#include <windows.h>

#include <initializer_list>

namespace exifkeep {

namespace {

bool isOneOf(std::string_view path, std::initializer_list<const char*> extensions) {
  const std::string extension(extensionOf(path));
  for (const char* known : extensions)
    if (lstrcmpiA(extension.c_str(), known) == 0) return true;
  return false;
}

}  // namespace

std::string withExtension(std::string_view path, std::string_view extension) {
  const std::string_view kept = path.substr(0, path.size() - extensionOf(path).size());
  return std::string(kept).append(extension);
}

bool isJpegName(std::string_view path) {
  return isOneOf(path, {"jpg", "jpeg", "jpe"});
}

bool isTiffName(std::string_view path) {
  return isOneOf(path, {"tif", "tiff"});
}

}  // namespace exifkeep

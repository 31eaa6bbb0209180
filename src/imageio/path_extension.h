// The extension of a file name, as the probe, the writers and the codec bridge take it.
#pragma once

#include <string_view>

namespace exifkeep {

// The text after the last '.' of the path, the whole path when it has none. A '.' in a directory
// name counts: what follows it is then no known extension.
constexpr std::string_view extensionOf(std::string_view path) noexcept {
  return path.substr(path.rfind('.') + 1);
}

// By the extension alone, in any case: jpg, jpeg or jpe; tif or tiff.
bool isJpegName(std::string_view path);
bool isTiffName(std::string_view path);

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
// The parts of a path, from its text alone.
#pragma once

#include <string>
#include <string_view>

namespace exifkeep {

// The only place in the library that depends on the operating system.
#if defined(_WIN32)
inline constexpr char pathSeparator = '\\';
inline constexpr std::string_view pathSeparators = "\\/:";  // any of these ends a directory
#else
inline constexpr char pathSeparator = '/';
inline constexpr std::string_view pathSeparators = "/";
#endif

// The part before the file name, including the separator, and the file name itself.
constexpr std::string_view directoryOf(std::string_view path) {
  while (!path.empty() && pathSeparators.find(path.back()) == pathSeparators.npos)
    path.remove_suffix(1);
  return path;
}
constexpr std::string_view fileNameOf(std::string_view path) {
  return path.substr(directoryOf(path).size());
}

// The text after the last '.' of the path, or the whole path if there is none. If that '.' is in a
// directory name, the result is no known extension.
constexpr std::string_view extensionOf(std::string_view path) {
  return path.substr(path.rfind('.') + 1);
}

// Whether the file name itself has a '.'.
constexpr bool hasExtension(std::string_view path) {
  return fileNameOf(path).find('.') != std::string_view::npos;
}

// The path with the text after its last '.' replaced. REQUIRES: hasExtension(path).
std::string withExtension(std::string_view path, std::string_view extension);

// Whether the extension, in any case, is jpg, jpeg or jpe; tif or tiff.
bool isJpegName(std::string_view path);
bool isTiffName(std::string_view path);

}  // namespace exifkeep

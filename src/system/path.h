// The parts of a path: rules on its bytes that touch no file.
#pragma once

#include <string>
#include <string_view>

namespace exifkeep {

// The one place where the library asks for the system.
#if defined(_WIN32)
inline constexpr char pathSeparator = '\\';
inline constexpr std::string_view pathSeparators = "\\/:";  // what a directory may end with
#else
inline constexpr char pathSeparator = '/';
inline constexpr std::string_view pathSeparators = "/";
#endif

// What precedes the file name, its separator included, and the file name itself.
constexpr std::string_view directoryOf(std::string_view path) noexcept {
  while (!path.empty() && pathSeparators.find(path.back()) == pathSeparators.npos)
    path.remove_suffix(1);
  return path;
}
constexpr std::string_view fileNameOf(std::string_view path) noexcept {
  return path.substr(directoryOf(path).size());
}

// The text after the last '.' of the path, the whole path when it has none. A '.' in a directory
// name counts: what follows it is then no known extension.
constexpr std::string_view extensionOf(std::string_view path) noexcept {
  return path.substr(path.rfind('.') + 1);
}

// Whether the file name, and not only its directory, has a '.'.
constexpr bool hasExtension(std::string_view path) noexcept {
  return fileNameOf(path).find('.') != std::string_view::npos;
}

// The path with the text after its last '.' replaced. REQUIRES: hasExtension(path).
std::string withExtension(std::string_view path, std::string_view extension);

// By the extension alone, in any case: jpg, jpeg or jpe; tif or tiff.
bool isJpegName(std::string_view path);
bool isTiffName(std::string_view path);

}  // namespace exifkeep

// SPDX-License-Identifier: MIT
/// @file
/// The user's code page, to which texts of the string tables are converted.
#pragma once

#include <platform_api.h>

#include <memory>
#include <string>
#include <string_view>

namespace exifkeep {

/// Converts UTF-8 to the user's code page, with "?" for each character that it lacks. Only one
/// thread at a time may use an object.
class EXIFKEEP_PLATFORM_API CodePageEncoder {
 public:
  /// An encoder for the environment's current code page, or null if that is UTF-8.
  static std::unique_ptr<CodePageEncoder> forUser();
  /// @cond
  // The same for a charset's name, which may be empty. Only on POSIX.
  static std::unique_ptr<CodePageEncoder> forCharset(std::string_view name);
  ~CodePageEncoder();
  CodePageEncoder(const CodePageEncoder&) = delete;
  CodePageEncoder& operator=(const CodePageEncoder&) = delete;
  /// @endcond

  /// Sets `text` to `utf8` converted to the code page. May throw std::bad_alloc.
  void encode(std::string_view utf8, std::string& text);

 private:
  explicit CodePageEncoder(void* converter) : converter_(converter) {}
  bool keepsAscii();

  void* converter_;  // iconv's descriptor; none on Windows
};

}  // namespace exifkeep

/// @file
/// The user's code page: what 8-bit texts of the string tables are handed out in.
#pragma once

#include <platform_api.h>

#include <memory>
#include <string>
#include <string_view>

namespace exifkeep {

/// Turns UTF-8 into the user's code page, with "?" for each character that it lacks. Belongs to one
/// thread at a time.
class EXIFKEEP_PLATFORM_API CodePageEncoder {
 public:
  /// For the code page that the environment names now. Null when that is UTF-8, so that nothing is
  /// to be turned.
  static std::unique_ptr<CodePageEncoder> forUser();
  /// @cond
  ~CodePageEncoder();
  CodePageEncoder(const CodePageEncoder&) = delete;
  CodePageEncoder& operator=(const CodePageEncoder&) = delete;
  /// @endcond

  /// Makes `text` what `utf8` is in the code page. May throw std::bad_alloc.
  void encode(std::string_view utf8, std::string& text);

 private:
  explicit CodePageEncoder(void* converter) : converter_(converter) {}
  bool keepsAscii();

  void* converter_;  // iconv's descriptor; none on Windows
};

}  // namespace exifkeep

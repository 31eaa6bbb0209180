// The user's code page: what 8-bit texts of the string tables are handed out in.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace exifkeep {

// Turns UTF-8 into the user's code page, with "?" for each character that it lacks.
class CodePageEncoder {
 public:
  // Null when the code page is UTF-8, so that nothing is to be turned.
  static std::unique_ptr<CodePageEncoder> forUser();
  ~CodePageEncoder();
  CodePageEncoder(const CodePageEncoder&) = delete;
  CodePageEncoder& operator=(const CodePageEncoder&) = delete;

  void encode(std::string_view utf8, std::string& text);

 private:
  explicit CodePageEncoder(void* converter) : converter_(converter) {}
  bool keepsAscii();

  void* converter_;  // iconv's descriptor; none on Windows
};

}  // namespace exifkeep

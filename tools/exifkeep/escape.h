// SPDX-License-Identifier: MIT
// Escapes texts for a terminal, an HTML page or a JSON document. Names and values come from
// untrusted files and may be any bytes. They are interpreted as UTF-8, and invalid bytes are
// handled in the longest runs that could have begun a character (Unicode 15, table 3-7).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace program {

// For a terminal: characters that could control it or change the order of reading become \n, \t,
// \r, \x1b or \u202e, and invalid bytes become \xff.
std::string escapeForTerminal(std::string_view text);

// For HTML, between tags or in a quoted attribute: markup characters become references; invalid
// runs of bytes, and control characters other than line feed and tab, become U+FFFD.
std::string escapeForHtml(std::string_view text);

// For JSON, between quotes (RFC 8259): invalid runs of bytes become U+FFFD.
std::string escapeForJson(std::string_view text);
// Copies the text to `to` if it is ASCII and needs no escaping; if not, returns false, and `to` may
// have been written.
bool copyPlainJson(std::string_view text, char* to);

// RFC 4648, section 4.
constexpr size_t base64Length(size_t bytes) {
  return (bytes + 2) / 3 * 4;
}
std::string base64(std::string_view bytes);
// Writes it to `to`; returns its end.
char* writeBase64(std::string_view bytes, char* to);

struct Utf8Step {
  std::string_view bytes;  // the bytes at the front of the text that form this step
  char32_t codePoint;      // U+FFFD if not valid
  bool valid;
};

// Removes the first step from `text`. REQUIRES: text is not empty.
Utf8Step takeUtf8Step(std::string_view& text);

}  // namespace program

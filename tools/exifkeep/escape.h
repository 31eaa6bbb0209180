// Texts as they may be sent to a terminal, an HTML page or a JSON document. Names and values come
// from files of strangers: they are bytes of any kind, taken as UTF-8, and bytes that are no UTF-8
// count as the longest run that could have begun a character (Unicode 15, table 3-7), so that each
// run is shown or replaced once.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace program {

// For a terminal: whatever could steer it or change the order of what is read is shown as \n, \t,
// \r, \x1b or \u202e, and bytes that are no UTF-8 as \xff.
std::string escapeForTerminal(std::string_view text);

// For HTML, between tags or in a quoted attribute: markup characters as references, and U+FFFD for
// each run of bytes that is no UTF-8 and for each control character but line feed and tab.
std::string escapeForHtml(std::string_view text);

// For JSON, between quotes (RFC 8259): U+FFFD for each run of bytes that is no UTF-8.
std::string escapeForJson(std::string_view text);
void appendForJson(std::string& out, std::string_view text);

// RFC 4648, section 4.
std::string base64(std::string_view bytes);

struct Utf8Step {
  std::string_view bytes;  // what this step takes from the front of the text
  char32_t codePoint;      // U+FFFD when not valid
  bool valid;
};

// Takes the first step off `text`.
// REQUIRES: text is not empty.
Utf8Step takeUtf8Step(std::string_view& text);

}  // namespace program

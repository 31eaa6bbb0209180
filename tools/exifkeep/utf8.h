// Reading UTF-8 text of unknown quality one code point at a time (Unicode 15, table 3-7). Bytes
// that are no UTF-8 come out as the longest run that could have begun a character, so that each run
// is shown or replaced once.
#pragma once

#include <cstddef>
#include <string_view>

namespace program {

struct Utf8Step {
  std::string_view bytes;  // what this step takes from the front of the text
  char32_t codePoint;      // U+FFFD when not valid
  bool valid;
};

// REQUIRES: text is not empty.
Utf8Step firstUtf8Step(std::string_view text);

// Takes the first step off `text`.
// REQUIRES: text is not empty.
Utf8Step takeUtf8Step(std::string_view& text);

}  // namespace program

// Text as it may be sent to a terminal: names and values come from files of strangers, so whatever
// could steer a terminal or change the order of what is read is shown escaped. Widths are those of
// Unicode (UAX #11) and do not depend on the process locale.
#pragma once

#include <string>
#include <string_view>

namespace program {

// True for what must not reach a terminal or a reader as it is: control characters (C0, DEL, C1),
// line and paragraph separators, and the marks that turn the direction of writing.
bool isControl(char32_t codePoint);

// `text` (UTF-8) with controls as \n, \t, \r, \x1b or \u202e and with bytes that are no UTF-8 as
// \xff.
std::string escapeForTerminal(std::string_view text);

// The columns that `text` (UTF-8 without controls) takes: 2 for a wide character, 0 for a combining
// mark.
int displayWidth(std::string_view text);

}  // namespace program

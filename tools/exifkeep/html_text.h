// Text for HTML documents.
#pragma once

#include <string>
#include <string_view>

namespace program {

// `text` as it may stand between tags or in a quoted attribute: markup characters as references,
// and U+FFFD for each run of bytes that is no UTF-8 and for each control character and mark of
// direction but line feed and tab.
std::string escapeForHtml(std::string_view text);

// RFC 4648, section 4.
std::string base64(std::string_view bytes);

}  // namespace program

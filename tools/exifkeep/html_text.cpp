// Escaping and base64.
#include "html_text.h"

#include "terminal_text.h"
#include "utf8.h"

namespace program {
namespace {

std::string_view escapedStep(const Utf8Step& step) {
  switch (step.codePoint) {
    case U'&': return "&amp;";
    case U'<': return "&lt;";
    case U'>': return "&gt;";
    case U'"': return "&quot;";
    case U'\'': return "&#39;";
    case U'\n':
    case U'\t': return step.bytes;
    default: return step.valid && !isControl(step.codePoint) ? step.bytes : "\uFFFD";
  }
}

}  // namespace

std::string escapeForHtml(std::string_view text) {
  std::string escaped;
  while (!text.empty()) escaped += escapedStep(takeUtf8Step(text));
  return escaped;
}

std::string base64(std::string_view bytes) {
  constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    const std::string_view group = bytes.substr(at, 3);
    unsigned bits = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      bits = bits << 8 | (i < group.size() ? static_cast<unsigned char>(group[i]) : 0u);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      text += i <= group.size() ? digits[bits >> (18 - 6 * i) & 0x3F] : '=';
    }
  }
  return text;
}

}  // namespace program

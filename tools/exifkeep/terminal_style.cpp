// Styles as ECMA-48 select graphic rendition sequences, from the sixteen colours that a user's own
// theme defines, so that they are readable on light and dark ground.
#include "terminal_style.h"

#include <unistd.h>

#include <cstdlib>

namespace program {
namespace {

ColorChoice choice = ColorChoice::automatic;

const char* sequence(Style style) {
  switch (style) {
    case Style::heading: return "\x1b[1m";
    case Style::label: return "\x1b[2m";
    case Style::good: return "\x1b[32m";
    case Style::missing: return "\x1b[33m";
    case Style::error: return "\x1b[1;31m";
  }
  return "";
}

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

bool isColored(Stream stream) {
  if (choice != ColorChoice::automatic) return choice == ColorChoice::always;
  return !isSet("NO_COLOR") && isCapableTerminal(stream);
}

}  // namespace

void chooseColor(ColorChoice chosen) {
  choice = chosen;
}

std::string styled(Style style, std::string_view text, Stream stream) {
  if (text.empty() || !isColored(stream)) return std::string(text);
  return sequence(style) + std::string(text) + "\x1b[0m";
}

bool isCapableTerminal(Stream stream) {
  const char* terminal = std::getenv("TERM");
  if (terminal == nullptr || *terminal == '\0' || terminal == std::string_view("dumb")) {
    return false;
  }
  return ::isatty(stream == Stream::output ? STDOUT_FILENO : STDERR_FILENO) != 0;
}

}  // namespace program

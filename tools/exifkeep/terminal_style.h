// Colour for people at a terminal. By itself the program colours only what goes to a terminal that
// can show it, and not while NO_COLOR is set and not empty (no-color.org); what is redirected stays
// plain text.
#pragma once

#include <string>
#include <string_view>

namespace program {

enum class ColorChoice { automatic, always, never };
void chooseColor(ColorChoice choice);

enum class Style { heading, label, good, missing, error };
enum class Stream { output, error };

// `text` as it goes to the stream: in the style's colour, or as it is. Escape `text` before.
std::string styled(Style style, std::string_view text, Stream stream = Stream::output);

// Whether the stream is a terminal where lines can be coloured and rewritten.
bool isCapableTerminal(Stream stream);

}  // namespace program

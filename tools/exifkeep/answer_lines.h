// Answers of one line a file, "FILE: answer", on standard output.
#pragma once

#include <string>
#include <string_view>

#include "exit_status.h"
#include "terminal_style.h"

namespace program {

// Escaped for a terminal.
void printAnswer(std::string_view path, std::string_view answer, Style style = Style::good);

// The answer for a file that the library refused: a line, or a complaint when the file cannot be
// opened.
ExitStatus answerNotExif(const std::string& path);

}  // namespace program

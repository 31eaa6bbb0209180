// Standard output carries data and standard error messages. A reader that has gone and a full disk
// are noticed, and no file that is opened later can take the place of a closed standard stream.
#pragma once

#include <string_view>

namespace program {

// Called once, before any file is opened and before the environment is changed.
void guardStandardStreams();

// Both keep what they are given for standard output until the next flushOutput: `text` is UTF-8 and
// goes out in the charset of the user's locale, `bytes` go out as they are.
void print(std::string_view text);
void printBytes(std::string_view bytes);

// Writes what was kept; the program does so at its end, commands over many files after each. False,
// after saying so once, when standard output cannot be written; without a word when its reader has
// gone.
bool flushOutput();

// One line on standard error: the program's name and `text`, escaped for a terminal and in the
// user's charset.
void complain(std::string_view text);

// The same about one file.
void complainAbout(std::string_view file, std::string_view text);

// The same about something that went well.
void noteAbout(std::string_view file, std::string_view text);

}  // namespace program

// SPDX-License-Identifier: MIT
// Standard output is for data and standard error for messages. Closed pipes and full disks are
// detected, and no file opened later can get the number of a closed standard stream.
#pragma once

#include <string_view>

namespace program {

// REQUIRES: called once, before any file is opened and before the environment is changed.
void guardStandardStreams();

// Both store output until the next flushOutput. `text` is UTF-8 and is converted to the charset of
// the user's locale; `bytes` are not converted.
void print(std::string_view text);
void printBytes(std::string_view bytes);

// Writes the stored output; called at the end of the program and after each of many files. False if
// standard output cannot be written; prints a message the first time, unless the reader closed the
// pipe.
bool flushOutput();

// Prints a line on standard error: the program's name and `text`, escaped for a terminal and in the
// user's charset.
void complain(std::string_view text);

// The same about one file.
void complainAbout(std::string_view file, std::string_view text);

// The same for a note instead of an error.
void noteAbout(std::string_view file, std::string_view text);

}  // namespace program

// SPDX-License-Identifier: MIT
// Functions to define the options of commands. The parser's own header takes seconds to compile, so
// only command_options.cpp and command_line.cpp include it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands.h"
#include "file_names.h"

namespace program {

// Returns what is wrong with a value, or nothing.
using Check = std::function<std::string(const std::string&)>;

CLI::App& addCommand(CLI::App& program, const char* name, const char* description);

// FILE... and -0.
void addFiles(CLI::App& command, FileNames& files);
// Throws a usage error if no names are given.
void requireFiles(const FileNames& files);

// A required positional argument.
void addArgument(CLI::App& command, const char* name, std::string& value, const char* description,
                 const Check& check = nullptr);
void addText(CLI::App& command, const char* option, std::string& value, const char* type,
             const char* description, const Check& check = nullptr);
// Values separated by commas. The option may be repeated.
void addList(CLI::App& command, const char* option, std::vector<std::string>& values,
             const char* type, const char* description);
// Positional arguments, at least `minCount`.
void addArguments(CLI::App& command, const char* name, std::vector<std::string>& values,
                  int minCount, const char* description);
void addNumber(CLI::App& command, const char* option, std::optional<int>& value, int min, int max,
               const char* description);
void addFlag(CLI::App& command, const char* option, bool& value, const char* description);
// Makes it a usage error to give both options, or `option` without `other`.
void exclude(CLI::App& command, const char* option, const char* other);
void require(CLI::App& command, const char* option, const char* other);

// Pictures cannot be written to standard output, because the extension of the name selects the
// format.
std::string checkPictureOutput(const std::string& name);

inline constexpr const char* statusesOverFiles =
    "0 all files have what was requested, 1 one is not an Exif file or lacks it,\n"
    "2 wrong usage, 3 a file could not be opened or the output not written.";
inline constexpr const char* statusesOfWriting =
    "0 written, 2 wrong usage, 3 a file could not be opened, decoded or written;\n"
    "existing files are then unchanged.";
// The last lines of the help text.
void addFooter(CLI::App& command, const std::string& text, const std::string& statuses);

// Sets a function to be called when `command` has been parsed. It must own the variables that the
// options set, as the parser refers to them until then.
void whenParsed(CLI::App& command, const std::function<void()>& parsed);

// Sets `chosen` to `body` with the options when `command` has been parsed.
template <class Options>
void setBody(CLI::App& command, Command& chosen, const std::shared_ptr<Options>& options,
             ExitStatus (*body)(const Options&)) {
  whenParsed(command,
             [options, body, &chosen] { chosen = [options, body] { return body(*options); }; });
}

}  // namespace program

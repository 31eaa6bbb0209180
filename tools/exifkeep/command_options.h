// What the commands' options are made of. The parser's own header takes seconds to compile, so only
// command_options.cpp and command_line.cpp include it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands.h"
#include "file_names.h"

namespace program {

// What is wrong with a value; empty when nothing is.
using Check = std::function<std::string(const std::string&)>;

CLI::App& addCommand(CLI::App& program, const char* name, const char* description);

// FILE... and -0.
void addFiles(CLI::App& command, FileNames& files);
// Throws a usage error when none were given, not even on standard input.
void requireFiles(const FileNames& files);

// An argument without dashes that must be given.
void addArgument(CLI::App& command, const char* name, std::string& value, const char* description,
                 const Check& check = nullptr);
void addText(CLI::App& command, const char* option, std::string& value, const char* type,
             const char* description, const Check& check = nullptr);
// Values with commas between; may be given more than once.
void addList(CLI::App& command, const char* option, std::vector<std::string>& values,
             const char* type, const char* description);
// Arguments without dashes, at least `least`.
void addArguments(CLI::App& command, const char* name, std::vector<std::string>& values, int least,
                  const char* description);
void addNumber(CLI::App& command, const char* option, std::optional<int>& value, int least,
               int most, const char* description);
void addFlag(CLI::App& command, const char* option, bool& value, const char* description);
// Usage errors: both options, or `option` without `other`.
void exclude(CLI::App& command, const char* option, const char* other);
void require(CLI::App& command, const char* option, const char* other);

// A picture cannot go to standard output, which has no extension to name a format.
std::string checkPictureOutput(const std::string& name);

inline constexpr const char* statusesOverFiles =
    "0 all files have what was asked for, 1 one is no Exif file or lacks it,\n"
    "2 wrong usage, 3 a file could not be opened or the output not written.";
inline constexpr const char* statusesOfWriting =
    "0 written, 2 wrong usage, 3 a file could not be opened, decoded or written;\n"
    "what was there before is then unchanged.";
// The last lines of the help text.
void addFooter(CLI::App& command, const std::string& text, const std::string& statuses);

// Called when `command` was parsed. Until then the parser refers to what the options fill: `parsed`
// is to own that.
void whenParsed(CLI::App& command, const std::function<void()>& parsed);

// The usual case: `body` with the options is what was chosen.
template <class Options>
void setBody(CLI::App& command, Command& chosen, const std::shared_ptr<Options>& options,
             ExitStatus (*body)(const Options&)) {
  whenParsed(command,
             [options, body, &chosen] { chosen = [options, body] { return body(*options); }; });
}

}  // namespace program

// SPDX-License-Identifier: MIT
#include "command_options.h"

#include <CLI/CLI.hpp>

namespace program {

CLI::App& addCommand(CLI::App& program, const char* name, const char* description) {
  return *program.add_subcommand(name, description);
}

// With a large number of expected names, the parser takes everything after "--" as names of this
// command, and does not interpret a name in square brackets as a list.
void addFiles(CLI::App& command, FileNames& files) {
  constexpr int plenty = CLI::detail::expected_max_vector_size;
  const auto takeNames = [&files](const CLI::results_t& names) {
    files.arguments = names;
    return true;
  };
  command.add_option("FILE", takeNames, "Pictures; - reads names from standard input")
      ->type_name("")
      ->expected(plenty, plenty)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  addFlag(command, "-0,--null", files.nulSeparated,
          "Read names from standard input, each terminated by a NUL byte");
}

void requireFiles(const FileNames& files) {
  if (files.empty()) throw CLI::RequiredError("FILE");
}

namespace {

CLI::Option* addChecked(CLI::App& command, const char* name, std::string& value, const char* type,
                        const char* description, const Check& check) {
  CLI::Option* option = command.add_option(name, value, description)->type_name(type);
  return check ? option->check(check) : option;
}

}  // namespace

void addArgument(CLI::App& command, const char* name, std::string& value, const char* description,
                 const Check& check) {
  addChecked(command, name, value, "", description, check)->required();
}

void addText(CLI::App& command, const char* option, std::string& value, const char* type,
             const char* description, const Check& check) {
  addChecked(command, option, value, type, description, check);
}

void addList(CLI::App& command, const char* option, std::vector<std::string>& values,
             const char* type, const char* description) {
  command.add_option(option, values, description)
      ->type_name(type)
      ->delimiter(',')
      ->allow_extra_args(false);
}

void addArguments(CLI::App& command, const char* name, std::vector<std::string>& values,
                  int minCount, const char* description) {
  command.add_option(name, values, description)
      ->type_name("")
      ->required()
      ->expected(minCount, CLI::detail::expected_max_vector_size);
}

void addNumber(CLI::App& command, const char* option, std::optional<int>& value, int min, int max,
               const char* description) {
  command.add_option(option, value, description)
      ->check(CLI::Range(min, max).description(""))
      ->type_name("N");
}

void addFlag(CLI::App& command, const char* option, bool& value, const char* description) {
  command.add_flag(option, value, description);
}

void exclude(CLI::App& command, const char* option, const char* other) {
  command.get_option(option)->excludes(command.get_option(other));
}

void require(CLI::App& command, const char* option, const char* other) {
  command.get_option(option)->needs(command.get_option(other));
}

std::string checkPictureOutput(const std::string& name) {
  return name == "-" ? "a picture is written to a file, not to standard output" : "";
}

void addFooter(CLI::App& command, const std::string& text, const std::string& statuses) {
  command.footer(text + "\nExit status: " + statuses);
}

void whenParsed(CLI::App& command, const std::function<void()>& parsed) {
  command.callback(parsed);
}

}  // namespace program

// SPDX-License-Identifier: MIT
#include "command_line.h"

#include <exifkeep_version.h>

#include <CLI/CLI.hpp>
#include <map>

#include "terminal.h"

namespace program {
namespace {

void addColor(CLI::App& command) {
  static const std::map<std::string, ColorChoice> choices = {{"auto", ColorChoice::automatic},
                                                             {"always", ColorChoice::always},
                                                             {"never", ColorChoice::never}};
  command
      .add_option_function<std::string>(
          "--color", [](const std::string& when) { chooseColor(choices.at(when)); },
          "Colours: auto (terminals, unless NO_COLOR is set), always or never")
      ->type_name("WHEN")
      ->check([](const std::string& when) {
        return choices.count(when) ? "" : "must be auto, always or never";
      });
}

// The parser has the names of `save` as one argument.
class UsageFormatter : public CLI::Formatter {
 public:
  std::string make_option_usage(const CLI::Option* option) const override {
    return Formatter::make_option_usage(option) +
           (option->get_name() == "SOURCE" ? " DESTINATION" : "");
  }
};

void describe(CLI::App& program) {
  program.formatter(std::make_shared<UsageFormatter>());
  program.name("exifkeep");
  program.set_help_flag("-h,--help", "Print this help");
  program.set_version_flag("--version", "exifkeep " EXIFKEEP_VERSION, "Print the version");
  for (const auto& [key, label] : {std::pair("SUBCOMMAND", "COMMAND"), std::pair("REQUIRED", ""),
                                   std::pair("Positionals", "Arguments")})
    program.get_formatter()->label(key, label);
  program.allow_windows_style_options(false);  // "/..." is a path on every system
  program.require_subcommand(0, 1);
  addColor(program);
  program.footer(
      "For the options of a command, see exifkeep COMMAND --help.\n\nExamples:\n"
      "  exifkeep info photo.jpg\n"
      "  exifkeep info --lang de --json photo.jpg\n"
      "  exifkeep save photo.jpg edited.jpg --picture edited.png\n"
      "\nExit status: 0 all files are Exif files and have what was requested, 1 one is not or\n"
      "has not, 2 wrong usage, 3 a file could not be opened or written.");
}

void addCommands(CLI::App& program, Command& chosen) {
  addInfo(program, chosen);
  addAnswers(program, chosen);
  addOpen(program, chosen);
  addSave(program, chosen);
  addAudio(program, chosen);
  for (CLI::App* command : program.get_subcommands({})) {
    command->group("Commands");
    addColor(*command);
  }
}

// The first argument that is neither an option nor the value of one. Nothing after an unknown
// option, which may have a value.
std::string commandName(int count, char** values) {
  int at = 1;
  while (at < count && std::string_view(values[at]).starts_with("--color"))
    at += values[at] == std::string_view("--color") ? 2 : 1;
  return at < count && values[at][0] != '-' ? values[at] : "";
}

// The parser's own message would list all arguments.
void requireKnownCommand(const CLI::App& program, const std::string& name) {
  const auto isNamed = [&](const CLI::App* command) { return command->get_name() == name; };
  if (name.empty() || !program.get_subcommands(isNamed).empty()) return;
  throw CLI::ParseError("unknown command " + name, CLI::ExitCodes::ExtrasError);
}

std::string complaintAbout(const CLI::App& program, const CLI::ParseError& error) {
  const auto commands = program.get_subcommands();
  const std::string command = commands.empty() ? "" : commands.front()->get_name() + " ";
  return std::string(error.what()) + " (see exifkeep " + command + "--help)";
}

}  // namespace

CommandLine parseCommandLine(int count, char** values) {
  CLI::App program{"Reads and writes the Exif data of JPEG and TIFF pictures."};
  describe(program);
  CommandLine parsed;
  addCommands(program, parsed.command);
  try {
    requireKnownCommand(program, commandName(count, values));
    program.parse(count, values);
    if (!parsed.command) parsed.text = program.help();
  } catch (const CLI::CallForHelp&) {
    parsed.text = program.help();
  } catch (const CLI::CallForVersion& version) {
    parsed.text = std::string(version.what()) + '\n';
  } catch (const CLI::ParseError& error) {
    parsed.complaint = complaintAbout(program, error);
  }
  return parsed;
}

}  // namespace program

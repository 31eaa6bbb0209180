// The options, help texts and examples of every command, for the CLI11 parser.
#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <memory>
#include <vector>

#include "commands.h"
#include "language_selection.h"
#include "terminal_style.h"

namespace program {
namespace {

struct Parser {
  CLI::App program{"Reads and writes the Exif data of JPEG and TIFF pictures."};
  std::function<ExitStatus()> chosen;
  std::vector<std::string> namesBehindDashes;
};

// FILE... and -0 of a command; the parser outlives it. The parser's own conversion of a list gives
// some texts a meaning, so the names are taken from its raw results.
class FilesOption {
 public:
  // `furtherNames` are those behind "--", which the parser does not see.
  FilesOption(CLI::App& command, const std::vector<std::string>& furtherNames)
      : furtherNames_(furtherNames),
        option_(
            command.add_option("FILE", converted_, "Pictures; - reads names from standard input")) {
    option_->type_name("");
    command.add_flag("-0,--null", nulSeparated_,
                     "Read names from standard input, each ended by a NUL byte");
  }

  FileNames names() const {
    FileNames files{option_->results(), nulSeparated_};
    files.arguments.insert(files.arguments.end(), furtherNames_.begin(), furtherNames_.end());
    if (files.empty()) throw CLI::RequiredError("FILE");
    return files;
  }

 private:
  const std::vector<std::string>& furtherNames_;
  std::vector<std::string> converted_;
  CLI::Option* option_;
  bool nulSeparated_ = false;
};

constexpr const char* statusesOverFiles =
    "0 all files have what was asked for, 1 one is no Exif file or lacks it,\n"
    "2 wrong usage, 3 a file could not be opened or the output not written.";
constexpr const char* statusesOfWriting =
    "0 written, 2 wrong usage, 3 a file could not be opened, decoded or written;\n"
    "what was there before is then unchanged.";

void addFooter(CLI::App& command, const std::string& text, const std::string& statuses) {
  command.footer(text + "\nExit status: " + statuses);
}

CLI::Option* addName(CLI::App& command, const std::string& option, std::string& value,
                     const char* type, const std::string& description) {
  return command.add_option(option, value, description)->type_name(type);
}

void addInfo(Parser& parser) {
  CLI::App* command = parser.program.add_subcommand("info", "List the Exif data of pictures");
  auto files = std::make_shared<FilesOption>(*command, parser.namesBehindDashes);
  auto options = std::make_shared<InfoOptions>();
  addName(*command, "--lang", options->language, "TAG",
          "Language of labels and values, such as de or zh-TW")
      ->check([](const std::string& tag) {
        return isLanguage(tag) ? "" : "no such language; there are " + languageTags();
      });
  CLI::Option* json =
      command->add_flag("--json", options->json, "Write a JSON array with an object per file");
  CLI::Option* html = command
                          ->add_flag("--html", options->html,
                                     "Write one HTML page, with a switch between all languages")
                          ->excludes(json);
  addName(*command, "-o,--output", options->output, "OUT",
          "File for the page of --html, standard output by default")
      ->needs(html);
  addFooter(*command,
            "Examples:\n"
            "  exifkeep info photo.jpg\n"
            "  exifkeep info --lang ja *.jpg\n"
            "  exifkeep info --html *.jpg -o sheet.html\n"
            "  find . -name '*.jpg' -print0 | exifkeep info --json -0\n",
            statusesOverFiles);
  command->callback([files, options, &parser] {
    options->files = files->names();
    parser.chosen = [options] { return info(*options); };
  });
}

// A command that goes over files and has no further options.
void addOverFiles(Parser& parser, const char* name, const char* description,
                  ExitStatus (*run)(const FileNames&), const char* examples) {
  CLI::App* command = parser.program.add_subcommand(name, description);
  auto files = std::make_shared<FilesOption>(*command, parser.namesBehindDashes);
  addFooter(*command, examples, statusesOverFiles);
  command->callback([files, run, &parser] {
    parser.chosen = [names = files->names(), run] { return run(names); };
  });
}

void addLanguages(Parser& parser) {
  CLI::App* command =
      parser.program.add_subcommand("languages", "List the languages of info --lang");
  addFooter(*command, "Example:\n  exifkeep languages\n",
            "0 listed, 2 wrong usage, 3 the output could not be written.");
  command->callback([&parser] { parser.chosen = languages; });
}

void addOpen(Parser& parser) {
  CLI::App* command = parser.program.add_subcommand("open", "Decode a picture and its thumbnail");
  auto options = std::make_shared<OpenOptions>();
  addName(*command, "FILE", options->file, "", "Picture with Exif data")->required();
  addName(*command, "--image", options->imageFile, "OUT", "Write the image to this file");
  addName(*command, "--thumbnail", options->thumbnailFile, "OUT",
          "Write the thumbnail to this file");
  addFooter(
      *command,
      "The extension of OUT names the format. Without options the size, depth and resolution of\n"
      "both are printed.\n\n"
      "Examples:\n"
      "  exifkeep open photo.jpg\n"
      "  exifkeep open photo.jpg --thumbnail small.png\n",
      "0 opened, 1 FILE is no Exif file, 2 wrong usage, 3 a file could not be opened,\n"
      "decoded or written.");
  command->callback([options, &parser] { parser.chosen = [options] { return open(*options); }; });
}

void addSave(Parser& parser) {
  CLI::App* command =
      parser.program.add_subcommand("save", "Save an image with the metadata of another picture");
  auto options = std::make_shared<SaveOptions>();
  addName(*command, "SOURCE", options->source, "", "Picture whose metadata goes along")->required();
  addName(*command, "DESTINATION", options->destination, "",
          "File to write, in the format of its extension")
      ->required();
  addName(*command, "--picture", options->picture, "FILE",
          "Image to save, SOURCE's own by default");
  addName(*command, "--thumbnail", options->thumbnail, "FILE",
          "Thumbnail, made from the image by default");
  command
      ->add_option("--process", options->processCode,
                   "What was done to the image: 2 turned, 3 resized, 4 to 6 filtered")
      ->type_name("N");
  addFooter(*command,
            "Metadata goes along from JPEG to JPEG and from TIFF to TIFF.\n\n"
            "Examples:\n"
            "  exifkeep save photo.jpg copy.jpg\n"
            "  exifkeep save photo.jpg turned.jpg --picture edited.png --process 2\n",
            statusesOfWriting);
  command->callback([options, &parser] { parser.chosen = [options] { return save(*options); }; });
}

void addAudio(Parser& parser) {
  CLI::App* command =
      parser.program.add_subcommand("audio", "Attach a sound recording to a picture");
  auto options = std::make_shared<AudioOptions>();
  addName(*command, "PICTURE", options->target, "", "Picture that the recording belongs to")
      ->required();
  addName(*command, "--sound", options->sound, "WAV", "Recording to copy beside the picture");
  addName(*command, "--software", options->software, "NAME",
          "Software to record, exifkeep by default")
      ->check([](const std::string& name) {
        return name.size() <= 255 ? "" : "the name of the software takes at most 255 bytes";
      });
  addName(*command, "--picture", options->picture, "FILE",
          "Image to write, PICTURE's own by default");
  addName(*command, "--thumbnail", options->thumbnail, "FILE",
          "Thumbnail, made from the image by default");
  command->add_flag("--yes", options->overwrite, "Overwrite existing files without asking");
  addFooter(
      *command,
      "Without --sound only a name is recorded, made from the picture's own. A picture without\n"
      "Exif data that is no TIFF file becomes a .jpg file beside it.\n\n"
      "Examples:\n"
      "  exifkeep audio photo.jpg --sound note.wav\n"
      "  exifkeep audio photo.jpg --software 'My Album'\n",
      statusesOfWriting);
  command->callback([options, &parser] { parser.chosen = [options] { return audio(*options); }; });
}

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
        return choices.count(when) ? "" : "takes auto, always or never";
      });
}

void addCommands(Parser& parser) {
  addInfo(parser);
  addOverFiles(parser, "check", "Tell whether pictures hold Exif data", check,
               "Examples:\n"
               "  exifkeep check photo.jpg && echo yes\n"
               "  find . -type f | exifkeep check -\n");
  addOverFiles(parser, "version", "Print the Exif version of pictures", version,
               "Example:\n  exifkeep version photo.jpg\n");
  addOverFiles(parser, "sound", "Print the names of the recordings attached to pictures", sound,
               "A recording lies beside its picture.\n\n"
               "Example:\n  exifkeep sound photo.jpg\n");
  addLanguages(parser);
  addOpen(parser);
  addSave(parser);
  addAudio(parser);
  for (CLI::App* command : parser.program.get_subcommands({})) {
    command->group("Commands");
    addColor(*command);
  }
}

void describe(CLI::App& program) {
  program.name("exifkeep");
  program.set_help_flag("-h,--help", "Print this help");
  program.set_version_flag("--version", "exifkeep " EXIFKEEP_VERSION, "Print the version");
  for (const auto& [key, label] : {std::pair("SUBCOMMAND", "COMMAND"), std::pair("REQUIRED", ""),
                                   std::pair("Positionals", "Arguments")}) {
    program.get_formatter()->label(key, label);
  }
  program.require_subcommand(0, 1);
  addFooter(program,
            "exifkeep COMMAND --help tells more.\n\nExamples:\n"
            "  exifkeep info photo.jpg\n"
            "  exifkeep info --lang de --json photo.jpg\n"
            "  exifkeep save photo.jpg edited.jpg --picture edited.png\n",
            "0 every file was an Exif file and had what was asked for, 1 one was not or\n"
            "had not, 2 wrong usage, 3 a file could not be opened or written.");
}

const CLI::App* findCommand(const CLI::App& program, const std::string& name) {
  const auto named = program.get_subcommands(
      [&](const CLI::App* candidate) { return candidate->get_name() == name; });
  return named.empty() ? nullptr : named.front();
}

// The parser's own complaint would name all arguments.
void requireKnownCommand(const CLI::App& program, const std::string& name) {
  if (name.empty() || name.front() == '-' || findCommand(program, name) != nullptr) return;
  throw CLI::ParseError("there is no command " + name, CLI::ExitCodes::ExtrasError);
}

bool takesManyFiles(const CLI::App& program, const std::string& name) {
  const CLI::App* command = findCommand(program, name);
  return command != nullptr && command->get_option_no_throw("--null") != nullptr;
}

// Among many files the parser takes an argument in square brackets for a list of its own; written
// as a relative path it is a name.
void protectBracketedNames(std::vector<std::string>& arguments) {
  for (std::string& argument : arguments) {
    const bool bracketed = argument.size() > 1 && argument.front() == '[' && argument.back() == ']';
    if (bracketed) argument.insert(0, "./");
  }
}

// What the parser is to see, in the order that it wants: last one first.
std::vector<std::string> parserArguments(Parser& parser, int count, char** values) {
  std::vector<std::string> arguments(values + std::min(count, 1), values + count);
  if (!arguments.empty() && takesManyFiles(parser.program, arguments.front())) {
    protectBracketedNames(arguments);
    const auto dashes = std::find(arguments.begin(), arguments.end(), "--");
    if (dashes != arguments.end()) parser.namesBehindDashes.assign(dashes + 1, arguments.end());
    arguments.erase(dashes, arguments.end());
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

std::string complaintAbout(const CLI::App& program, const CLI::ParseError& error) {
  const auto commands = program.get_subcommands();
  const std::string command = commands.empty() ? "" : commands.front()->get_name() + " ";
  return std::string(error.what()) + " (see exifkeep " + command + "--help)";
}

}  // namespace

CommandLine parseCommandLine(int count, char** values) {
  Parser parser;
  CLI::App& program = parser.program;
  describe(program);
  addCommands(parser);
  CommandLine parsed;
  try {
    requireKnownCommand(program, count > 1 ? values[1] : "");
    program.parse(parserArguments(parser, count, values));
    parsed.command = parser.chosen;
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

// CLI11 keeps references to what its options fill, so each command's options live as long as the
// function that the parser calls for it.
#include "add_commands.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>

#include "commands.h"
#include "language_selection.h"
#include "terminal_style.h"

namespace program {
namespace {

// FILE... and -0. The parser is to expect more names than there can be: so it takes what follows
// "--" for this command's names, and a name in square brackets for no list of its own.
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
  command.add_flag("-0,--null", files.nulSeparated,
                   "Read names from standard input, each ended by a NUL byte");
}

void requireFiles(const FileNames& files) {
  if (files.empty()) throw CLI::RequiredError("FILE");
}

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

// Where a picture goes; standard output has no extension that names a format.
CLI::Option* addPictureOutput(CLI::App& command, const std::string& option, std::string& value,
                              const char* type, const std::string& description) {
  return addName(command, option, value, type, description)->check([](const std::string& name) {
    return name == "-" ? "a picture goes to a file, not to standard output" : "";
  });
}

void addInfo(CLI::App& program, Command& chosen) {
  CLI::App* command = program.add_subcommand("info", "List the Exif data of pictures");
  auto options = std::make_shared<InfoOptions>();
  addFiles(*command, options->files);
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
          "Write the page of --html to this file; - is standard output")
      ->needs(html);
  addFooter(*command,
            "Examples:\n"
            "  exifkeep info photo.jpg\n"
            "  exifkeep info --lang ja *.jpg\n"
            "  exifkeep info --html *.jpg -o sheet.html\n"
            "  find . -name '*.jpg' -print0 | exifkeep info --json -0\n",
            statusesOverFiles);
  command->callback([options, &chosen] {
    requireFiles(options->files);
    if (options->output == "-") options->output.clear();
    chosen = [options] { return info(*options); };
  });
}

// A command that goes over files and has no further options.
void addOverFiles(CLI::App& program, Command& chosen, const char* name, const char* description,
                  ExitStatus (*run)(const FileNames&), const char* examples) {
  CLI::App* command = program.add_subcommand(name, description);
  auto files = std::make_shared<FileNames>();
  addFiles(*command, *files);
  addFooter(*command, examples, statusesOverFiles);
  command->callback([files, run, &chosen] {
    requireFiles(*files);
    chosen = [files, run] { return run(*files); };
  });
}

void addLanguages(CLI::App& program, Command& chosen) {
  CLI::App* command = program.add_subcommand("languages", "List the languages of info --lang");
  addFooter(*command, "Example:\n  exifkeep languages\n",
            "0 listed, 2 wrong usage, 3 the output could not be written.");
  command->callback([&chosen] { chosen = languages; });
}

void addOpen(CLI::App& program, Command& chosen) {
  CLI::App* command = program.add_subcommand("open", "Decode a picture and its thumbnail");
  auto options = std::make_shared<OpenOptions>();
  addName(*command, "FILE", options->file, "", "Picture with Exif data")->required();
  addPictureOutput(*command, "--image", options->imageFile, "OUT", "Write the image to this file");
  addPictureOutput(*command, "--thumbnail", options->thumbnailFile, "OUT",
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
  command->callback([options, &chosen] { chosen = [options] { return open(*options); }; });
}

void addSave(CLI::App& program, Command& chosen) {
  CLI::App* command =
      program.add_subcommand("save", "Save an image with the metadata of another picture");
  auto options = std::make_shared<SaveOptions>();
  addName(*command, "SOURCE", options->source, "", "Picture whose metadata goes along")->required();
  addPictureOutput(*command, "DESTINATION", options->destination, "",
                   "File to write, in the format of its extension")
      ->required();
  addName(*command, "--picture", options->picture, "FILE",
          "Image to save, SOURCE's own by default");
  addName(*command, "--thumbnail", options->thumbnail, "FILE",
          "Thumbnail, made from the image by default");
  command
      ->add_option("--process", options->processCode,
                   "What was done to the image: 2 turned, 3 resized, 4 to 6 filtered")
      ->check(CLI::Range(2, 6).description(""))
      ->type_name("N");
  addFooter(*command,
            "Metadata goes along from JPEG to JPEG and from TIFF to TIFF.\n\n"
            "Examples:\n"
            "  exifkeep save photo.jpg copy.jpg\n"
            "  exifkeep save photo.jpg turned.jpg --picture edited.png --process 2\n",
            statusesOfWriting);
  command->callback([options, &chosen] { chosen = [options] { return save(*options); }; });
}

void addAudio(CLI::App& program, Command& chosen) {
  CLI::App* command = program.add_subcommand("audio", "Attach a sound recording to a picture");
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
  command->callback([options, &chosen] { chosen = [options] { return audio(*options); }; });
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

}  // namespace

void addCommands(CLI::App& program, Command& chosen) {
  addInfo(program, chosen);
  addOverFiles(program, chosen, "check", "Tell whether pictures hold Exif data", check,
               "Examples:\n"
               "  exifkeep check photo.jpg && echo yes\n"
               "  find . -type f | exifkeep check -\n");
  addOverFiles(program, chosen, "version", "Print the Exif version of pictures", version,
               "Example:\n  exifkeep version photo.jpg\n");
  addOverFiles(program, chosen, "sound", "Print the names of the recordings attached to pictures",
               sound,
               "A recording lies beside its picture.\n\n"
               "Example:\n  exifkeep sound photo.jpg\n");
  addLanguages(program, chosen);
  addOpen(program, chosen);
  addSave(program, chosen);
  addAudio(program, chosen);
  for (CLI::App* command : program.get_subcommands({})) {
    command->group("Commands");
    addColor(*command);
  }
}

}  // namespace program

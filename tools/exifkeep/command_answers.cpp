// exifkeep check, version, sound and languages: the commands whose answers are single lines.
#include <exifkeep/exifkeep.h>
#include <language.h>

#include <cstdio>

#include "answers.h"
#include "command_options.h"
#include "standard_streams.h"
#include "text_table.h"

namespace program {
namespace {

ExitStatus check(const std::string& path) {
  if (!IsExifFile(path.c_str())) return answerNotExif(path);
  printAnswer(path, "Exif file");
  return ExitStatus::ok;
}

ExitStatus answerMissing(const std::string& path, const char* what) {
  if (!IsExifFile(path.c_str())) return answerNotExif(path);
  printAnswer(path, what, Style::missing);
  return ExitStatus::notExif;
}

ExitStatus version(const std::string& path) {
  const float number = GetExifVersion(path.c_str());
  if (number == 0.0f) return answerMissing(path, "no Exif version");
  char digits[32];
  std::snprintf(digits, sizeof digits, "%g", number);
  printAnswer(path, digits);
  return ExitStatus::ok;
}

ExitStatus sound(const std::string& path) {
  char name[15];
  if (!GetSoundFile(path.c_str(), name)) return answerMissing(path, "no recording");
  printAnswer(path, name);
  return ExitStatus::ok;
}

ExitStatus languages() {
  TextTable table;
  for (const exifkeep::LanguageVariant& variant : exifkeep::languageVariants()) {
    table.addRow(variant.tag, variant.name);
  }
  print(table.text());
  return ExitStatus::ok;
}

void addOverFiles(CLI::App& program, Command& chosen, const char* name, const char* description,
                  ExitStatus (*answer)(const std::string&), const char* examples) {
  CLI::App& command = addCommand(program, name, description);
  auto files = std::make_shared<FileNames>();
  addFiles(command, *files);
  addFooter(command, examples, statusesOverFiles);
  whenParsed(command, [files, answer, &chosen] {
    requireFiles(*files);
    chosen = [files, answer] { return files->forEach(answer); };
  });
}

}  // namespace

void addAnswers(CLI::App& program, Command& chosen) {
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
  CLI::App& command = addCommand(program, "languages", "List the languages of info --lang");
  addFooter(command, "Example:\n  exifkeep languages\n",
            "0 listed, 2 wrong usage, 3 the output could not be written.");
  whenParsed(command, [&chosen] { chosen = languages; });
}

}  // namespace program

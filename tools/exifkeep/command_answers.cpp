// SPDX-License-Identifier: MIT
// The commands with answers of one line: check, version, sound and languages.
#include <exifkeep/exifkeep.h>
#include <language.h>

#include <cstdio>

#include "answers.h"
#include "command_options.h"
#include "json_answers.h"
#include "standard_streams.h"
#include "text_table.h"

namespace program {
namespace {

// A command with one answer per file.
struct LineCommand {
  const char* name;
  const char* description;
  // The answer, or empty if there is none.
  std::string (*find)(const std::string& path);
  const char* missing;
  const char*
      key;  // of the answer in JSON, or null if the answer is just whether it is an Exif file
  bool isNumber;
  const char* examples;
};

struct LineOptions {
  FileNames files;
  bool json = false;
};

std::string findExif(const std::string& path) {
  return IsExifFile(path.c_str()) ? "Exif file" : "";
}

std::string findVersion(const std::string& path) {
  const float number = GetExifVersion(path.c_str());
  char digits[32] = "";
  if (number != 0.0f) std::snprintf(digits, sizeof digits, "%g", number);
  return digits;
}

std::string findSound(const std::string& path) {
  char name[15] = "";
  GetSoundFile(path.c_str(), name);
  return name;
}

constexpr LineCommand lineCommands[] = {
    {"check", "Check whether pictures have Exif data", findExif, "", nullptr, false,
     "Examples:\n"
     "  exifkeep check photo.jpg && echo yes\n"
     "  find . -type f | exifkeep check -\n"},
    {"version", "Print the Exif version of pictures", findVersion, "no Exif version", "version",
     true, "Example:\n  exifkeep version photo.jpg\n"},
    {"sound", "Print the names of the recordings attached to pictures", findSound, "no recording",
     "sound", false,
     "A recording is in the same folder as its picture.\n\n"
     "Example:\n  exifkeep sound photo.jpg\n"},
};

ExitStatus printLine(const LineCommand& command, const std::string& path) {
  const std::string found = command.find(path);
  if (!found.empty()) {
    printAnswer(path, found);
    return ExitStatus::ok;
  }
  if (!IsExifFile(path.c_str())) return answerNotExif(path);
  printAnswer(path, command.missing, Style::missing);
  return ExitStatus::notExif;
}

FileRefusal writeLine(const LineCommand& command, JsonWriter& json, const std::string& path) {
  const std::string found = command.find(path);
  const bool isExif = !found.empty() || IsExifFile(path.c_str());
  FileRefusal refusal = isExif ? FileRefusal{ExitStatus::ok, "", nullptr} : explainRefusal(path);
  writeExif(json, refusal);
  if (!command.key) return refusal;
  json.key(command.key);
  if (found.empty())
    json.null();
  else if (command.isNumber)
    json.number(found);
  else
    json.text(found);
  if (isExif && found.empty()) refusal.status = ExitStatus::notExif;
  return refusal;
}

ExitStatus answerAll(const LineCommand& command, const LineOptions& options) {
  if (!options.json)
    return options.files.forEach([&](const std::string& path) { return printLine(command, path); });
  const auto answer = [&](JsonWriter& json, const std::string& path) {
    return writeLine(command, json, path);
  };
  return answerAsJson(options.files, 1, JsonForm::array, answer);
}

ExitStatus languagesAsJson() {
  JsonWriter json;
  json.beginArray();
  for (const exifkeep::LanguageVariant& variant : exifkeep::languageVariants()) {
    json.beginObject();
    json.key("tag");
    json.text(variant.tag);
    json.key("name");
    json.text(variant.name);
    json.endObject();
  }
  json.endArray();
  printBytes(json.written());
  return ExitStatus::ok;
}

ExitStatus languages() {
  TextTable table;
  for (const exifkeep::LanguageVariant& variant : exifkeep::languageVariants())
    table.addRow(variant.tag, variant.name);
  print(table.text());
  return ExitStatus::ok;
}

void addJson(CLI::App& command, bool& json) {
  addFlag(command, "--json", json, "Write JSON");
}

void addLineCommand(CLI::App& program, Command& chosen, const LineCommand& line) {
  CLI::App& command = addCommand(program, line.name, line.description);
  auto options = std::make_shared<LineOptions>();
  addFiles(command, options->files);
  addJson(command, options->json);
  addFooter(command, line.examples, statusesOverFiles);
  whenParsed(command, [options, &line, &chosen] {
    requireFiles(options->files);
    chosen = [options, &line] { return answerAll(line, *options); };
  });
}

}  // namespace

void addAnswers(CLI::App& program, Command& chosen) {
  for (const LineCommand& line : lineCommands) addLineCommand(program, chosen, line);
  CLI::App& command = addCommand(program, "languages", "List the languages of info --lang");
  auto json = std::make_shared<bool>(false);
  addJson(command, *json);
  addFooter(command, "Example:\n  exifkeep languages\n",
            "0 listed, 2 wrong usage, 3 the output could not be written.");
  whenParsed(command, [json, &chosen] {
    chosen = [json] { return *json ? languagesAsJson() : languages(); };
  });
}

}  // namespace program

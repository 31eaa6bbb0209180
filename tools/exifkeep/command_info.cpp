// exifkeep info: the labels and values of pictures, as a table or as JSON.
#include "command_options.h"
#include "escape.h"
#include "info_html.h"
#include "json_writer.h"
#include "language_selection.h"
#include "picture_info.h"
#include "standard_streams.h"
#include "terminal.h"
#include "text_table.h"

namespace program {
namespace {

struct InfoOptions {
  FileNames files;
  std::string language;  // BCP 47; empty for the user's own
  bool json = false;
  bool html = false;
  std::string output;  // file for the HTML page; empty or "-" for standard output
};

class TableOutput {
 public:
  explicit TableOutput(bool headings) : headings_(headings) {}

  void show(const std::string& path, const PictureInfo& info) {
    if (!info.isExif()) {
      complainAbout(path, info.refusal().reason);
      return;
    }
    if (headings_ && !first_) print("\n");
    if (headings_) print(styled(Style::heading, escapeForTerminal(path)) + '\n');
    first_ = false;
    TextTable table;
    info.forEachItem([&](const char* label, const char* value) { table.addRow(label, value); });
    print(table.text(headings_ ? "  " : ""));
  }

 private:
  bool headings_;
  bool first_ = true;
};

void showAsJson(JsonWriter& json, const std::string& path, const PictureInfo& info) {
  json.beginObject();
  json.key("file");
  json.text(path);
  json.key("exif");
  json.boolean(info.isExif());
  json.key("items");
  json.beginArray();
  info.forEachItem([&](const char* label, const char* value) {
    json.beginObject();
    json.key("label");
    json.text(label);
    json.key("value");
    json.text(value);
    json.endObject();
  });
  json.endArray();
  json.endObject();
}

ExitStatus listAsTable(const FileNames& files) {
  TableOutput table(files.several());
  return files.forEach([&](const std::string& path) {
    const PictureInfo info(path);
    table.show(path, info);
    return info.refusal().status;
  });
}

ExitStatus listAsJson(const FileNames& files) {
  std::string text;
  JsonWriter json(text);
  json.beginArray();
  const ExitStatus status = files.forEach([&](const std::string& path) {
    const PictureInfo info(path);
    showAsJson(json, path, info);
    printBytes(text);
    text.clear();
    if (info.refusal().status == ExitStatus::failed) complainAbout(path, info.refusal().reason);
    return info.refusal().status;
  });
  json.endArray();
  printBytes(text);
  return status;
}

ExitStatus info(const InfoOptions& options) {
  selectLanguage(options.language);
  if (options.html) return listAsHtml(options.files, options.output == "-" ? "" : options.output);
  return options.json ? listAsJson(options.files) : listAsTable(options.files);
}

}  // namespace

void addInfo(CLI::App& program, Command& chosen) {
  CLI::App& command = addCommand(program, "info", "List the Exif data of pictures");
  auto options = std::make_shared<InfoOptions>();
  addFiles(command, options->files);
  addText(command, "--lang", options->language, "TAG",
          "Language of labels and values, such as de or zh-TW", [](const std::string& tag) {
            return isLanguage(tag) ? "" : "no such language; there are " + languageTags();
          });
  addFlag(command, "--json", options->json, "Write a JSON array with an object per file");
  addFlag(command, "--html", options->html,
          "Write one HTML page, with a switch between all languages");
  addText(command, "-o,--output", options->output, "OUT",
          "Write the page of --html to this file; - is standard output");
  exclude(command, "--html", "--json");
  require(command, "--output", "--html");
  addFooter(command,
            "Examples:\n"
            "  exifkeep info photo.jpg\n"
            "  exifkeep info --lang ja *.jpg\n"
            "  exifkeep info --html *.jpg -o sheet.html\n"
            "  find . -name '*.jpg' -print0 | exifkeep info --json -0\n",
            statusesOverFiles);
  whenParsed(command, [options, &chosen] {
    requireFiles(options->files);
    chosen = [options] { return info(*options); };
  });
}

}  // namespace program

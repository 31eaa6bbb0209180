// exifkeep info: the labels and values of pictures, as a table or as JSON.
#include "commands.h"
#include "file_names.h"
#include "json_writer.h"
#include "language_selection.h"
#include "picture_info.h"
#include "standard_streams.h"
#include "terminal_style.h"
#include "terminal_text.h"
#include "text_table.h"

namespace program {
namespace {

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

}  // namespace

ExitStatus info(const InfoOptions& options) {
  selectLanguage(options.language);
  if (options.html) return listAsHtml(options);
  return options.json ? listAsJson(options.files) : listAsTable(options.files);
}

}  // namespace program

// SPDX-License-Identifier: MIT
// exifkeep info: the labels and values of pictures, as a table, JSON or CSV.
#include <algorithm>
#include <deque>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "command_options.h"
#include "escape.h"
#include "info_html.h"
#include "json_answers.h"
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
  FieldChoice choice;
  bool json = false;
  bool jsonLines = false;
  bool csv = false;
  bool html = false;
  std::optional<int> jobs;
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
    info.forEachItem([&](const exifkeep::InfoField& field) {
      table.addRow(static_cast<const char*>(field.label), static_cast<const char*>(field.value));
    });
    print(table.text(headings_ ? "  " : ""));
  }

 private:
  bool headings_;
  bool first_ = true;
};

// A line according to RFC 4180.
std::string csvLine(const std::vector<std::string>& cells) {
  std::string line;
  for (std::string cell : cells) {
    for (size_t at = 0; (at = cell.find('"', at)) != cell.npos; at += 2) cell.insert(at, 1, '"');
    if (cell.find_first_of(",\"\r\n") != cell.npos) cell = '"' + cell + '"';
    line += (line.empty() ? "" : ",") + cell;
  }
  return line + '\n';
}

// One line per picture, with a column for each selected tag, or else for each tag that any picture
// has. In the latter case the columns are known only at the end.
class CsvOutput {
 public:
  explicit CsvOutput(const FieldChoice& choice) : choice_(choice), columns_(choice.tags) {}

  void show(const std::string& path, const PictureInfo& info) {
    std::vector<std::string> cells(columns_.size());
    info.forEachItem([&](const exifkeep::InfoField& field) {
      cellOf(field, cells) = static_cast<const char*>(field.value);
    });
    cells.insert(cells.begin(), path);
    lines_.push_back(std::move(cells));
    if (!choice_.tags.empty()) flush();
  }
  void finish() { flush(); }

 private:
  std::string& cellOf(const exifkeep::InfoField& field, std::vector<std::string>& cells) {
    size_t at = 0;
    while (at < columns_.size() && !isTagOf(columns_[at], field)) ++at;
    if (at == columns_.size()) columns_.emplace_back(field.name);
    cells.resize(std::max(cells.size(), at + 1));
    return cells[at];
  }
  void flush() {
    if (!headed_) {
      std::vector<std::string> heads = columns_;
      heads.insert(heads.begin(), "file");
      printBytes(csvLine(heads));
    }
    headed_ = true;
    for (std::vector<std::string>& cells : lines_) {
      cells.resize(columns_.size() + 1);
      printBytes(csvLine(cells));
    }
    lines_.clear();
  }

  const FieldChoice& choice_;
  std::vector<std::string> columns_;
  std::vector<std::vector<std::string>> lines_;
  bool headed_ = false;
};

size_t jobsOf(const InfoOptions& options) {
  const auto cores = static_cast<int>(std::thread::hardware_concurrency());  // 0: not known
  return static_cast<size_t>(options.jobs.value_or(std::max(cores, 1)));
}

// Reads the pictures on several threads and calls `show` for each in order.
ExitStatus listEach(const InfoOptions& options,
                    const std::function<void(const std::string&, const PictureInfo&)>& show) {
  const auto examine = [&](const FileNames::Group& paths) -> FileNames::Answer {
    const auto infos = std::make_shared<std::deque<PictureInfo>>();
    for (const std::string& path : paths) infos->emplace_back(path, options.choice);
    return [&show, paths, infos] {
      ExitStatus worst = ExitStatus::ok;
      for (size_t i = 0; i < paths.size(); ++i) {
        const PictureInfo& info = (*infos)[i];
        show(paths[i], info);
        worst = std::max(worst, info.refusal().status);
      }
      return worst;
    };
  };
  return options.files.forEach(jobsOf(options), 1, examine);
}

ExitStatus listAsTable(const InfoOptions& options) {
  TableOutput table(options.files.several());
  return listEach(
      options, [&](const std::string& path, const PictureInfo& info) { table.show(path, info); });
}

ExitStatus listAsJson(const InfoOptions& options) {
  FieldWriters writers;
  const auto answer = [&](JsonWriter& json, const std::string& path) {
    const PictureInfo info(path, options.choice);
    writeExif(json, info.refusal());
    json.key("items");
    json.beginArray();
    std::unique_ptr<FieldWriter> fields = writers.take();
    info.forEachItem([&](const exifkeep::InfoField& field) { fields->write(json, field); });
    writers.giveBack(std::move(fields));
    json.endArray();
    return info.refusal();
  };
  const JsonForm form = options.jsonLines ? JsonForm::lines : JsonForm::array;
  return answerAsJson(options.files, jobsOf(options), form, answer);
}

ExitStatus listAsCsv(const InfoOptions& options) {
  CsvOutput csv(options.choice);
  const ExitStatus status =
      listEach(options, [&](const std::string& path, const PictureInfo& info) {
        csv.show(path, info);
        if (!info.isExif()) complainAbout(path, info.refusal().reason);
      });
  csv.finish();
  return status;
}

ExitStatus list(const InfoOptions& options) {
  if (options.html) return listAsHtml(options.files, options.output == "-" ? "" : options.output);
  if (options.csv) return listAsCsv(options);
  return options.json || options.jsonLines ? listAsJson(options) : listAsTable(options);
}

// There is no list of all names for hosts, so a misspelt tag is one that no picture has.
ExitStatus info(const InfoOptions& options) {
  selectLanguage(options.language);
  ExitStatus status = list(options);
  for (size_t i = 0; i < options.choice.tags.size(); ++i) {
    if (options.choice.found[i]) continue;
    complainAbout(options.choice.tags[i], "no picture has this tag");
    status = std::max(status, ExitStatus::notExif);
  }
  return status;
}

}  // namespace

void addInfo(CLI::App& program, Command& chosen) {
  CLI::App& command = addCommand(program, "info", "List the Exif data of pictures");
  auto options = std::make_shared<InfoOptions>();
  addFiles(command, options->files);
  addText(command, "--lang", options->language, "TAG",
          "Language of labels and values, such as de or zh-TW", [](const std::string& tag) {
            return isLanguage(tag) ? "" : "unknown language; the languages are " + languageTags();
          });
  addFlag(command, "--json", options->json, "Write a JSON array with an object per file");
  addFlag(command, "--json-lines", options->jsonLines,
          "Write the objects of --json one per line, each as soon as possible");
  addFlag(command, "--csv", options->csv,
          "Write a line of comma-separated values per file, in columns by tag");
  addList(command, "--tag", options->choice.tags, "NAME",
          "List only these tags: standard names or numbers, separated by commas");
  addFlag(command, "--gps", options->choice.gps, "Also list GPS fields");
  addFlag(command, "-r,--recursive", options->files.recursive,
          "List all pictures in folders and their subfolders");
  addNumber(command, "-j,--jobs", options->jobs, 1, 1024,
            "Read up to N pictures at a time; by default the number of cores");
  addFlag(command, "--html", options->html, "Write an HTML page with a switch for the language");
  addText(command, "-o,--output", options->output, "OUT",
          "Write the page of --html to this file; - is standard output");
  for (const char* other : {"--json", "--json-lines", "--csv", "--tag", "--gps", "--jobs"})
    exclude(command, "--html", other);
  exclude(command, "--csv", "--json");
  for (const char* other : {"--json", "--csv"}) exclude(command, "--json-lines", other);
  require(command, "--output", "--html");
  addFooter(command,
            "Examples:\n"
            "  exifkeep info photo.jpg\n"
            "  exifkeep info --lang ja *.jpg\n"
            "  exifkeep info -r --csv --tag Model,ExposureTime,FNumber holidays\n"
            "  exifkeep info --html *.jpg -o sheet.html\n"
            "  find . -name '*.jpg' -print0 | exifkeep info --json-lines -0\n",
            statusesOverFiles);
  whenParsed(command, [options, &chosen] {
    requireFiles(options->files);
    FieldChoice& choice = options->choice;
    choice.found = std::vector<std::atomic<bool>>(choice.tags.size());
    for (const std::string& tag : choice.tags)
      choice.gps |= lstrcmpiA(tag.substr(0, 3).c_str(), "gps") == 0;
    chosen = [options] { return info(*options); };
  });
}

}  // namespace program

// SPDX-License-Identifier: MIT
// exifkeep info --html: the labels and values of pictures in all languages on one page.
#include "info_html.h"

#include <language.h>

#include "info_sheet.h"
#include "language_selection.h"
#include "picture_info.h"
#include "standard_streams.h"
#include "system.h"

namespace program {
namespace {

using Kind = SheetPicture::Kind;
using namespace std::string_view_literals;

// Writes the page to standard output piece by piece, or to a file at the end.
class SheetOutput {
 public:
  explicit SheetOutput(const std::string& file) : file_(file) {}

  bool keepsBack() const { return !file_.empty(); }
  void write(const std::string& html) {
    if (keepsBack())
      kept_ += html;
    else
      printBytes(html);
  }
  // If the file cannot be written, prints the reason, leaves an existing file unchanged and returns
  // false.
  bool finish() const {
    const std::string problem = keepsBack() ? replaceFile(file_, kept_) : "";
    if (!problem.empty()) complainAbout(file_, "not written: " + problem);
    return problem.empty();
  }

 private:
  const std::string& file_;
  std::string kept_;
};

// Removes the spaces that fill fields of fixed size.
std::string trimmed(std::string_view text) {
  return std::string(text.substr(0, text.find_last_not_of(" \t\r\n") + 1));
}

// Adds the texts in the selected language. If the file has changed in the meantime, some may be
// missing.
void addLanguage(const PictureInfo& info, std::vector<SheetRow>& rows, size_t language) {
  const size_t count = exifkeep::languageVariants().size();
  size_t at = 0;
  info.forEachItem([&](const exifkeep::InfoField& field) {
    if (at == rows.size()) rows.push_back({field.name, LanguageTexts(count), LanguageTexts(count)});
    rows[at].label[language] = static_cast<const char*>(field.label);
    rows[at].value[language] = trimmed(field.value);
    ++at;
  });
}

SheetPicture readPicture(const std::string& path, FileRefusal& refusal) {
  SheetPicture picture;
  picture.path = path;
  size_t language = 0;
  int64_t orientation = 1;
  for (const exifkeep::LanguageVariant& variant : exifkeep::languageVariants()) {
    selectLanguage(variant.tag);
    const PictureInfo info(path);
    refusal = info.refusal();
    if (!info.isExif()) break;
    addLanguage(info, picture.rows, language++);
    info.forEachItem([&](const exifkeep::InfoField& field) {
      if (field.name == "Orientation"sv && !field.numbers.empty())
        orientation = field.numbers.front();
    });
  }
  if (refusal.status == ExitStatus::notExif) picture.kind = Kind::notExif;
  if (refusal.status == ExitStatus::failed) picture.kind = Kind::notOpened;
  if (picture.kind != Kind::notOpened) picture.preview = makePreview(path, orientation);
  return picture;
}

// Checks that the page does not overwrite one of the pictures.
bool wouldOverwrite(const std::string& out, const std::string& path) {
  if (!isSameFile(out, path)) return false;
  complainAbout(out, "is one of the files to list; choose another name for -o");
  return true;
}

}  // namespace

ExitStatus listAsHtml(const FileNames& files, const std::string& out) {
  SheetOutput output(out);
  InfoSheet sheet(selectedLanguage());
  output.write(sheet.begin(files.several() ? "" : files.arguments.front()));
  bool overwrites = false;
  const ExitStatus status = files.forEach(
      [&](const std::string& path) {
        overwrites = overwrites || wouldOverwrite(out, path);
        if (overwrites) return ExitStatus::failed;
        FileRefusal refusal{ExitStatus::ok, "", nullptr};
        output.write(sheet.section(readPicture(path, refusal)));
        if (refusal.status != ExitStatus::ok) complainAbout(path, refusal.reason);
        return refusal.status;
      },
      output.keepsBack());
  output.write(sheet.end());
  return !overwrites && output.finish() ? status : ExitStatus::failed;
}

}  // namespace program

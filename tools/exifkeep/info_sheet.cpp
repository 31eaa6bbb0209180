// Tags are balanced as XML wants it and attributes quoted, so that simple readers get along too.
#include "info_sheet.h"

#include <language.h>

#include <algorithm>
#include <array>

#include "escape.h"
#include "sheet_words.h"

namespace program {
namespace {

using exifkeep::LanguageVariant;

// What a photographer asks first, found by the labels of res/1033-en.txt.
constexpr std::array<std::string_view, 2> leadLabels = {"Model", "Date and Time of Original"};
constexpr std::array<std::string_view, 4> factLabels = {"Exposure Time", "F-number",
                                                        "ISO Speed Ratings", "Focal Length"};

std::string attribute(std::string_view name, std::string_view value) {
  return ' ' + std::string(name) + "=\"" + escapeForHtml(value) + '"';
}

// An element whose text is that of the language shown. A text that is the same in all languages
// comes from the file, and its language is not known. `form` makes HTML of one text.
std::string localized(const std::string& name, const LanguageTexts& texts,
                      std::string (*form)(std::string_view) = escapeForHtml,
                      const std::string& attributes = "") {
  const bool same = std::equal(texts.begin() + 1, texts.end(), texts.begin());
  std::string html = '<' + name + attributes;
  if (same) {
    html += " lang=\"\">" + form(texts.front());
  } else {
    html += " class=\"t\">";
    const auto variants = exifkeep::languageVariants();
    for (size_t i = 0; i < variants.size(); ++i) {
      html += "<span" + attribute("lang", variants[i].tag) + '>' + form(texts[i]) + "</span>";
    }
  }
  return html + "</" + name + '>';
}

LanguageTexts inAllLanguages(std::string_view SheetWords::*word) {
  LanguageTexts texts;
  for (const LanguageVariant& variant : exifkeep::languageVariants()) {
    texts.emplace_back(sheetWords(variant.tag).*word);
  }
  return texts;
}

// A value without the blanks that fill fields of fixed size.
std::string valueHtml(std::string_view text) {
  return escapeForHtml(text.substr(0, text.find_last_not_of(" \t\r\n") + 1));
}

// "1/60 (seconds)" with its unit set apart.
std::string factHtml(std::string_view text) {
  const size_t unit = text.rfind(" (");
  if (unit == text.npos || text.back() != ')') return valueHtml(text);
  const std::string_view name = text.substr(unit + 2, text.size() - unit - 3);
  return valueHtml(text.substr(0, unit)) + " <small>" + escapeForHtml(name) + "</small>";
}

size_t indexOfEnglish() {
  const auto variants = exifkeep::languageVariants();
  const auto english = std::find_if(variants.begin(), variants.end(),
                                    [](const auto& variant) { return variant.tag == "en"; });
  return static_cast<size_t>(english - variants.begin());
}

const SheetRow* findRow(const SheetPicture& picture, std::string_view englishLabel) {
  const size_t english = indexOfEnglish();
  const auto row =
      std::find_if(picture.rows.begin(), picture.rows.end(), [&](const SheetRow& candidate) {
        return candidate.label[english] == englishLabel &&
               !valueHtml(candidate.value[english]).empty();
      });
  return row == picture.rows.end() ? nullptr : &*row;
}

std::string languageRules() {
  std::string shown;
  for (const LanguageVariant& variant : exifkeep::languageVariants()) {
    const std::string tag(variant.tag);
    shown += (shown.empty() ? "" : ",\n") + (":root[lang=" + tag + "] .t>[lang=" + tag + ']');
  }
  return ".t>[lang]{display:none}\n" + shown + "{display:inline}\n";
}

std::string languageSwitch(std::string_view language) {
  const auto all = exifkeep::languageVariants();
  std::vector<LanguageVariant> variants(all.begin(), all.end());
  std::sort(variants.begin(), variants.end(),
            [](const auto& left, const auto& right) { return left.name < right.name; });
  std::string html = "<label hidden=\"\">" +
                     localized("span", inAllLanguages(&SheetWords::language)) +
                     "\n<select autocomplete=\"off\">\n";
  for (const LanguageVariant& variant : variants) {
    html += "<option" + attribute("value", variant.tag) + attribute("lang", variant.tag) +
            (variant.tag == language ? " selected=\"\"" : "") + '>' + std::string(variant.name) +
            "</option>\n";
  }
  return html + "</select></label>\n";
}

std::string previewHtml(const SheetPicture& picture) {
  const PicturePreview& preview = picture.preview;
  if (preview.jpeg.empty()) return "";
  return "<img" + attribute("src", "data:image/jpeg;base64," + base64(preview.jpeg)) +
         attribute("width", std::to_string(preview.width)) +
         attribute("height", std::to_string(preview.height)) + attribute("alt", picture.path) +
         "/>\n";
}

std::string headingHtml(const std::string& path) {
  const size_t name = path.rfind('/') + 1;
  std::string html = "<h2>";
  if (name > 0) html += "<span>" + escapeForHtml(path.substr(0, name)) + "</span>";
  return html + escapeForHtml(path.substr(name)) + "</h2>\n";
}

std::string leadHtml(const SheetPicture& picture) {
  std::string html;
  for (const std::string_view label : leadLabels) {
    if (const SheetRow* row = findRow(picture, label))
      html += localized("span", row->value, valueHtml);
  }
  return html.empty() ? "" : "<p class=\"lead\">" + html + "</p>\n";
}

std::string factsHtml(const SheetPicture& picture) {
  std::string html;
  for (const std::string_view label : factLabels) {
    if (const SheetRow* row = findRow(picture, label)) {
      html += "<div>" + localized("dt", row->label) + localized("dd", row->value, factHtml) +
              "</div>\n";
    }
  }
  return html.empty() ? "" : "<dl>\n" + html + "</dl>\n";
}

std::string tableHtml(const SheetPicture& picture) {
  std::string html = "<table><tbody>\n";
  for (const SheetRow& row : picture.rows) {
    html += "<tr>" + localized("th", row.label, escapeForHtml, " scope=\"row\"") +
            localized("td", row.value, valueHtml) + "</tr>\n";
  }
  return html + "</tbody></table>\n";
}

}  // namespace

std::string_view englishValue(const SheetPicture& picture, std::string_view englishLabel) {
  const SheetRow* row = findRow(picture, englishLabel);
  return row ? row->value[indexOfEnglish()] : std::string_view();
}

std::string beginSheet(std::string_view title, std::string_view language) {
  return "<!DOCTYPE html>\n<html" + attribute("lang", language) +
         ">\n<head>\n<meta charset=\"utf-8\"/>\n<title>" + escapeForHtml(title) +
         "</title>\n"
         // Nothing is fetched, whatever the texts of a picture hold.
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src "
         "data:; style-src 'unsafe-inline'; script-src 'unsafe-inline'\"/>\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
         "<meta name=\"color-scheme\" content=\"light dark\"/>\n"
         "<link rel=\"icon\" href=\"data:,\"/>\n<style>\n" +
         sheetStyle + languageRules() + "</style>\n</head>\n<body>\n<header>\n" +
         localized("h1", inAllLanguages(&SheetWords::title)) + '\n' + languageSwitch(language) +
         "</header>\n<main>\n";
}

std::string sheetSection(const SheetPicture& picture) {
  using Kind = SheetPicture::Kind;
  std::string html = "<section>\n<div class=\"top\">\n" + previewHtml(picture) + "<div>\n" +
                     headingHtml(picture.path) + leadHtml(picture) + factsHtml(picture);
  if (picture.kind != Kind::exif) {
    html += localized("p", inAllLanguages(picture.kind == Kind::notExif ? &SheetWords::noExif
                                                                        : &SheetWords::notOpened));
  }
  html += "</div>\n</div>\n";
  return html + (picture.rows.empty() ? "" : tableHtml(picture)) + "</section>\n";
}

std::string endSheet() {
  return std::string("</main>\n<script>\n") + sheetScript + "</script>\n</body>\n</html>\n";
}

}  // namespace program

// SPDX-License-Identifier: MIT
// Tags are balanced as in XML and attributes are quoted, for simple parsers.
#include "info_sheet.h"

#include <language.h>

#include <algorithm>

#include "escape.h"
#include "sheet_words.h"

namespace program {
namespace {

using exifkeep::LanguageVariant;

// The most important facts for a photographer.
constexpr std::string_view leadTags[] = {"Model", "DateTimeOriginal"};
constexpr std::string_view factTags[] = {"ExposureTime", "FNumber", "ISOSpeedRatings",
                                         "FocalLength"};

std::string attribute(std::string_view name, std::string_view value) {
  return ' ' + std::string(name) + "=\"" + escapeForHtml(value) + '"';
}

bool isSameInAll(const LanguageTexts& texts) {
  return std::equal(texts.begin() + 1, texts.end(), texts.begin());
}

LanguageTexts inAllLanguages(std::string_view SheetWords::*word, const std::string& before = "") {
  LanguageTexts texts;
  for (const LanguageVariant& variant : exifkeep::languageVariants())
    texts.push_back(before + std::string(sheetWords(variant.tag).*word));
  return texts;
}

const SheetRow* findRow(const SheetPicture& picture, std::string_view tagName) {
  const auto row =
      std::find_if(picture.rows.begin(), picture.rows.end(), [&](const SheetRow& candidate) {
        return candidate.tagName == tagName && !candidate.value.front().empty();
      });
  return row == picture.rows.end() ? nullptr : &*row;
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

// A JSON string without HTML markup characters.
std::string scriptString(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : escapeForJson(text))
    c == '<' ? quoted += "\\u003c" : c == '&' ? quoted += "\\u0026" : quoted += c;
  return quoted += '"';
}

}  // namespace

InfoSheet::InfoSheet(std::string_view language) : language_(language) {
  const auto variants = exifkeep::languageVariants();
  languageIndex_ = static_cast<size_t>(
      std::find_if(variants.begin(), variants.end(),
                   [&](const LanguageVariant& variant) { return variant.tag == language; }) -
      variants.begin());
}

// A text that is the same in all languages is from the file, and its language is unknown.
std::string InfoSheet::localized(const std::string& element, const LanguageTexts& texts,
                                 const std::string& attributes) {
  std::string html = '<' + element + attributes;
  if (isSameInAll(texts)) {
    html += " lang=\"\"";
  } else {
    const auto [known, isNew] = numbers_.try_emplace(texts, texts_.size());
    if (isNew) texts_.push_back(&known->first);
    html += attribute("data-text", std::to_string(known->second));
  }
  return html + '>' + escapeForHtml(texts[languageIndex_]) + "</" + element + '>';
}

// In "1/60 (seconds)" only the unit differs between languages. In facts it is shown separately.
std::string InfoSheet::valueHtml(const std::string& element, const LanguageTexts& values,
                                 bool unitApart) {
  if (!unitApart && isSameInAll(values)) return localized(element, values);
  const std::string amount = values.front().substr(0, values.front().rfind(" ("));
  LanguageTexts units;
  for (const std::string& value : values) {
    if (!value.starts_with(amount + " (") || !value.ends_with(')'))
      return localized(element, values);
    units.push_back(value.substr(amount.size() + 2, value.size() - amount.size() - 3));
  }
  return '<' + element + '>' + escapeForHtml(amount) +
         (unitApart ? ' ' + localized("small", units) : " (" + localized("span", units) + ')') +
         "</" + element + '>';
}

std::string InfoSheet::languageSwitch() {
  const auto all = exifkeep::languageVariants();
  std::vector<LanguageVariant> variants(all.begin(), all.end());
  std::sort(variants.begin(), variants.end(),
            [](const auto& left, const auto& right) { return left.name < right.name; });
  std::string html = "<label hidden=\"\">" +
                     localized("span", inAllLanguages(&SheetWords::language)) +
                     "\n<select autocomplete=\"off\">\n";
  for (const LanguageVariant& variant : variants) {
    html += "<option" + attribute("value", variant.tag) + attribute("lang", variant.tag) +
            (variant.tag == language_ ? " selected=\"\"" : "") + '>' + std::string(variant.name) +
            "</option>\n";
  }
  return html + "</select></label>\n";
}

std::string InfoSheet::leadHtml(const SheetPicture& picture) {
  std::string html;
  for (const std::string_view tag : leadTags)
    if (const SheetRow* row = findRow(picture, tag)) html += localized("span", row->value);
  return html.empty() ? "" : "<p class=\"lead\">" + html + "</p>\n";
}

std::string InfoSheet::factsHtml(const SheetPicture& picture) {
  std::string html;
  for (const std::string_view tag : factTags) {
    if (const SheetRow* row = findRow(picture, tag)) {
      html += "<div>" + localized("dt", row->label);
      html += valueHtml("dd", row->value, true) + "</div>\n";
    }
  }
  return html.empty() ? "" : "<dl>\n" + html + "</dl>\n";
}

std::string InfoSheet::remarksHtml(const SheetPicture& picture) {
  using Kind = SheetPicture::Kind;
  std::string html;
  const auto remark = [&](bool holds, std::string_view SheetWords::*words) {
    if (holds) html += localized("p", inAllLanguages(words)) + '\n';
  };
  remark(picture.kind == Kind::notExif, &SheetWords::noExif);
  remark(picture.kind == Kind::notOpened, &SheetWords::notOpened);
  remark(picture.preview.isDamaged, &SheetWords::damaged);
  return html;
}

std::string InfoSheet::tableHtml(const SheetPicture& picture) {
  if (picture.rows.empty()) return "";
  std::string html = "<table><tbody>\n";
  for (const SheetRow& row : picture.rows) {
    html += "<tr>" + localized("th", row.label, " scope=\"row\"");
    html += valueHtml("td", row.value, false) + "</tr>\n";
  }
  return html + "</tbody></table>\n";
}

std::string InfoSheet::begin(const std::string& name) {
  const LanguageTexts title = inAllLanguages(&SheetWords::title, name.empty() ? "" : name + " – ");
  // Nothing is fetched, and no other script is run, whatever the texts of a picture contain.
  const std::string policy = "default-src 'none'; img-src data:; style-src 'sha256-" +
                             base64(sheetStyle.sha256) + "'; script-src 'sha256-" +
                             base64(sheetScript.sha256) + "'";
  std::string html = "<!DOCTYPE html>\n<html" + attribute("lang", language_) +
                     ">\n<head>\n<meta charset=\"utf-8\"/>\n"
                     "<meta http-equiv=\"Content-Security-Policy\" content=\"" +
                     policy + "\"/>\n" + localized("title", title) + '\n';
  html +=
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
      "<meta name=\"color-scheme\" content=\"light dark\"/>\n"
      "<link rel=\"icon\" href=\"data:,\"/>\n<style>";
  (html += sheetStyle.text) += "</style>\n</head>\n<body>\n<header>\n";
  html += localized("h1", inAllLanguages(&SheetWords::title)) + '\n';
  return html + languageSwitch() + "</header>\n<main>\n";
}

std::string InfoSheet::section(const SheetPicture& picture) {
  std::string html = "<section>\n<div class=\"top\">\n" + previewHtml(picture) + "<div>\n" +
                     headingHtml(picture.path);
  html += leadHtml(picture);
  html += factsHtml(picture);
  html += remarksHtml(picture) + "</div>\n</div>\n";
  return html + tableHtml(picture) + "</section>\n";
}

std::string InfoSheet::end() const {
  std::string html = "</main>\n<script type=\"application/json\">{";
  const auto variants = exifkeep::languageVariants();
  for (size_t i = 0; i < variants.size(); ++i) {
    (html += i == 0 ? "\n" : ",\n") += scriptString(variants[i].tag) + ":[";
    for (const LanguageTexts* texts : texts_)
      (html += texts == texts_.front() ? "" : ",") += scriptString((*texts)[i]);
    html += ']';
  }
  return html + "\n}</script>\n<script>" + std::string(sheetScript.text) +
         "</script>\n</body>\n</html>\n";
}

}  // namespace program

// SPDX-License-Identifier: MIT
// Build step that compiles the language files of this folder into the library's string table: a C++
// file, or Windows string resources if the name of the output ends in .rc. The build stops with a
// message if an id is missing or unknown, a text is surrounded by spaces or is invalid UTF-8, or a
// comment is not the English text.
//
//   compile_strings OUTPUT FILE...     each FILE is named LANGUAGEID-tag.txt

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int firstId = 1;
constexpr int lastId = 158;
constexpr int emptyId = 19;  // has no text in any language
constexpr int english = 1033;

struct Language {
  int id = 0;
  std::string file;
  std::map<int, std::string> texts;
  std::map<int, std::string> comments;
};

[[noreturn]] void fail(const std::string& where, const std::string& what) {
  std::cerr << where << ": " << what << '\n';
  std::exit(1);
}

// The length of the well-formed UTF-8 sequence at the start of `text` (Unicode 15, table 3-7); 0
// for an ill-formed one.
size_t sequenceLength(std::string_view text) {
  const auto byte = [&](size_t i) {
    return i < text.size() ? static_cast<uint8_t>(text[i]) : uint8_t{0};
  };
  const auto isTail = [&](size_t i) { return (byte(i) & 0xC0) == 0x80; };
  const uint8_t lead = byte(0), second = byte(1);
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return isTail(1) ? 2 : 0;
  if (lead >= 0xE0 && lead <= 0xEF) {
    const bool isOverlong = lead == 0xE0 && second < 0xA0;
    const bool isSurrogate = lead == 0xED && second > 0x9F;
    return isTail(1) && isTail(2) && !isOverlong && !isSurrogate ? 3 : 0;
  }
  if (lead >= 0xF0 && lead <= 0xF4) {
    const bool isOverlong = lead == 0xF0 && second < 0x90;
    const bool isBeyond = lead == 0xF4 && second > 0x8F;
    return isTail(1) && isTail(2) && isTail(3) && !isOverlong && !isBeyond ? 4 : 0;
  }
  return 0;
}

bool isText(std::string_view text) {
  if (text.empty() || text.front() == ' ' || text.back() == ' ') return false;
  // Wide and no-break spaces, traces of failed conversions, and "%", which printf would interpret.
  for (const char* unwanted : {"\u3000", "\u00A0", "\uFEFF", "\uFFFD", "%"})
    if (text.find(unwanted) != text.npos) return false;
  while (!text.empty()) {
    const size_t length = sequenceLength(text);
    const auto lead = static_cast<uint8_t>(text.front());
    // No text needs characters of four bytes, which would be two units in UTF-16.
    if (length == 0 || length > 3 || lead < 0x20 || lead == 0x7F) return false;
    text.remove_prefix(length);
  }
  return true;
}

int leadingNumber(std::string_view text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

Language readLanguage(const std::string& path) {
  Language language;
  language.file = path.substr(path.find_last_of('/') + 1);
  language.id = leadingNumber(language.file);
  std::ifstream input(path);
  if (!input || language.id == 0) fail(path, "cannot be read, or its name has no language id");
  std::string comment;
  int lineNumber = 0, previousId = 0;
  for (std::string line; std::getline(input, line);) {
    const std::string where = language.file + ":" + std::to_string(++lineNumber);
    if (line.empty()) continue;
    if (line.starts_with("# ")) {
      comment = line.substr(2);
      continue;
    }
    const size_t tab = line.find('\t');
    const int id = leadingNumber(line);
    if (tab == std::string::npos || line.substr(0, tab) != std::to_string(id))
      fail(where, "is neither a comment nor id, tab, text");
    if (id < firstId || id > lastId || id == emptyId) fail(where, "this id is not in the table");
    if (id <= previousId) fail(where, "ids are not in ascending order");
    if (!isText(line.substr(tab + 1))) fail(where, "the text is empty, padded or not clean UTF-8");
    language.texts[id] = line.substr(tab + 1);
    language.comments[id] = comment;
    previousId = id;
  }
  for (int id = firstId; id <= lastId; ++id)
    if (id != emptyId && !language.texts.contains(id))
      fail(language.file, "id " + std::to_string(id) + " is missing");
  return language;
}

void checkComments(const std::vector<Language>& languages) {
  for (const Language& original : languages) {
    if (original.id != english) continue;
    for (const Language& language : languages)
      for (const auto& [id, comment] : language.comments)
        if (comment != original.texts.at(id))
          fail(language.file,
               "the comment of id " + std::to_string(id) + " is not its English text");
    return;
  }
  fail("string table", "the English file is missing");
}

void writeLiteral(std::ostream& output, std::string_view text) {
  output << '"';
  for (char c : text) {
    if (c == '"' || c == '\\') output << '\\';
    output << c;
  }
  output << '"';
}

void writeTable(std::ostream& output, const std::vector<Language>& languages) {
  output << "// Made by compile_strings from res/.\n#include \"info/string_table.h\"\n\n"
            "namespace exifkeep {\n\nnamespace {\n";
  for (const Language& language : languages) {
    output << "\nconstexpr std::string_view texts" << language.id << "[] = {\n    \"\",\n";
    for (int id = firstId; id <= lastId; ++id) {
      output << "    ";
      writeLiteral(output, id == emptyId ? "" : language.texts.at(id));
      output << ",\n";
    }
    output << "};\n";
  }
  output << "\nconstexpr AfxStringVariant variants[] = {\n";
  for (const Language& language : languages)
    output << "    {" << language.id << ", texts" << language.id << "},\n";
  output << "};\n\n}  // namespace\n\nconst AfxStringTable stringTable{variants};\n\n"
            "}  // namespace exifkeep\n";
}

// In resource scripts quotes are doubled, and characters outside ASCII are UTF-16 numbers of four
// digits. REQUIRES: well-formed UTF-8 up to U+FFFF.
void writeWideLiteral(std::ostream& output, std::string_view text) {
  output << "L\"";
  while (!text.empty()) {
    const size_t length = sequenceLength(text);
    unsigned unit = static_cast<uint8_t>(text[0]) & (length == 1 ? 0x7F : 0xFF >> (length + 1));
    for (size_t i = 1; i < length; ++i) unit = unit << 6 | (text[i] & 0x3F);
    if (text[0] == '"' || text[0] == '\\') output << text[0];
    if (length == 1)
      output << text[0];
    else
      output << "\\x" << std::hex << std::setw(4) << std::setfill('0') << unit << std::dec;
    text.remove_prefix(length);
  }
  output << '"';
}

// A Windows language id has the language in its low ten bits and the region in the others.
void writeResources(std::ostream& output, const std::vector<Language>& languages) {
  output << "// Made by compile_strings from res/.\n";
  for (const Language& language : languages) {
    output << "\nLANGUAGE " << (language.id & 0x3FF) << ", " << (language.id >> 10)
           << "\nSTRINGTABLE\nBEGIN\n";
    for (const auto& [id, text] : language.texts) {
      output << "  " << id << ' ';
      writeWideLiteral(output, text);
      output << '\n';
    }
    output << "END\n";
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) fail("usage", "compile_strings OUTPUT FILE...");
  std::vector<Language> languages;
  for (int i = 2; i < argc; ++i) languages.push_back(readLanguage(argv[i]));
  checkComments(languages);
  std::ofstream output(argv[1]);
  if (std::string_view(argv[1]).ends_with(".rc"))
    writeResources(output, languages);
  else
    writeTable(output, languages);
  output.close();
  if (!output) fail(argv[1], "cannot be written");
}

// Text of unknown quality on its way out: escaping, columns and JSON strings.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "json_writer.h"
#include "terminal_text.h"

namespace exifkeep::test {
namespace {

TEST(OutputText, InvalidBytesAndControlsAreEscapedOrReplaced) {
  struct Case {
    std::string text, terminal, json;
  };
  const std::vector<Case> cases = {
      {"plain \\ \"", "plain \\ \"", "plain \\ \""},
      {"Gr\u00FC\u00DFe \u65E5\U0001F4F7", "Gr\u00FC\u00DFe \u65E5\U0001F4F7",
       "Gr\u00FC\u00DFe \u65E5\U0001F4F7"},
      {"a\nb\tc\rd", "a\\nb\\tc\\rd", "a\nb\tc\rd"},
      {"\x1B[31m\x7F", "\\x1b[31m\\x7f", "\x1B[31m\x7F"},
      {"\u009B2J\u202Ereversed", "\\u009b2J\\u202ereversed", "\u009B2J\u202Ereversed"},
      // Every longest run that could begin a character counts once (Unicode 15, section 3.9).
      {"\xFF\x80", "\\xff\\x80", "\uFFFD\uFFFD"},
      {"\xC0\xAF", "\\xc0\\xaf", "\uFFFD\uFFFD"},
      {"\xE2\x82x", "\\xe2\\x82x", "\uFFFDx"},
      {"\xED\xA0\x80", "\\xed\\xa0\\x80", "\uFFFD\uFFFD\uFFFD"},
      {"\xF0\x9F\x93", "\\xf0\\x9f\\x93", "\uFFFD"},
      {"\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xE0\x9F\xBF\xE1", "\\xe0\\x9f\\xbf\\xe1", "\uFFFD\uFFFD\uFFFD\uFFFD"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(program::escapeForTerminal(c.text), c.terminal);
    std::string written;
    program::JsonWriter(written).text(c.text);
    EXPECT_EQ(nlohmann::json::parse(written).get<std::string>(), c.json) << written;
    for (const unsigned char byte : written) EXPECT_TRUE(byte >= 0x20 && byte != 0x7F) << written;
  }
}

TEST(OutputText, WidthCountsTerminalColumns) {
  const std::vector<std::pair<std::string, int>> cases = {
      {"", 0},
      {"Model", 5},
      {"Bildaufl\u00F6sung", 13},
      {"Bildauflo\u0308sung", 13},      // combining diaeresis
      {"\u753B\u50CF\u65B9\u5411", 8},  // ideographs
      {"\uB178\uCD9C", 4},              // Hangul syllables
      {"\u1112\u1161\u11AB", 2},        // the same in letters: one cell pair
      {"\u30AB\u3099", 2},              // kana with a combining voice mark
      {"\uFF76\uFF9E", 2},              // half-width kana
      {"\U0001F4F7\uFE0F", 2},          // pictograph with a variation selector
  };
  for (const auto& [text, width] : cases) EXPECT_EQ(program::displayWidth(text), width) << text;
}

}  // namespace
}  // namespace exifkeep::test

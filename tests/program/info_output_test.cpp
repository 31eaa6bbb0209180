// exifkeep info: the table, JSON and languages, on files whose texts are hostile; and the functions
// behind it that escape and measure such texts.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <vector>

#include "escape.h"
#include "json_writer.h"
#include "program/exif_fixture.h"
#include "program/shell.h"
#include "text_table.h"

namespace exifkeep::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

class InfoOutput : public ShellTest {};

TEST_F(InfoOutput, TableIsAlignedUnderEachFilesName) {
  write("a.jpg", exifJpeg("Maker A"));
  write("b.jpg", exifJpeg("Maker B"));
  EXPECT_EQ(run("$E info a.jpg").out, "Make          Maker A\nExif Version  2.20\n");
  EXPECT_EQ(run("$E info a.jpg gone.jpg b.jpg").out,
            "a.jpg\n  Make          Maker A\n  Exif Version  2.20\n\n"
            "b.jpg\n  Make          Maker B\n  Exif Version  2.20\n");
}

TEST_F(InfoOutput, SendsNothingHostileToTheTerminal) {
  write("a\x1B[2J.jpg", exifJpeg("\x1B]0;owned\x07 100%s\r\xFF"));
  EXPECT_THAT(run("$E info a*.jpg gone.jpg").out,
              AllOf(HasSubstr("a\\x1b[2J.jpg\n"), HasSubstr("\\x1b]0;owned\\x07 100%s\\r\\xff\n")));
  EXPECT_THAT(run("$E info \"$(printf 'gone\\033[2J')\"").err, HasSubstr("gone\\x1b[2J: "));
}

TEST_F(InfoOutput, JsonIsValidWhateverTheBytes) {
  write("n\xE4me \"1\"\n.jpg", exifJpeg("\x01\"\\\xC3\xBC\xED\xA0\x80"));
  write("plain.jpg", "");
  const Outcome outcome = run("$E info --json n*.jpg plain.jpg gone.jpg");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("gone.jpg: No such file"));
  EXPECT_EQ(json::parse(outcome.out), json::parse(R"([
    {"file": "n\ufffdme \"1\"\n.jpg", "exif": true, "error": null, "items": [
      {"directory": "IFD0", "tag": 271, "name": "Make",
       "raw": "\u0001\"\\\u00fc\ufffd\ufffd\ufffd", "label": "Make",
       "value": "\u0001\"\\\u00fc\ufffd\ufffd\ufffd"},
      {"directory": "Exif", "tag": 36864, "name": "ExifVersion", "raw": "0220",
       "label": "Exif Version", "value": "2.20"}]},
    {"file": "plain.jpg", "exif": false, "error": "not-exif", "items": []},
    {"file": "gone.jpg", "exif": false, "error": "missing", "items": []}])"));

  std::istringstream lines(run("$E info --json-lines n*.jpg plain.jpg gone.jpg").out);
  json objects = json::array();
  for (std::string line; std::getline(lines, line);) objects.push_back(json::parse(line));
  EXPECT_EQ(objects, json::parse(outcome.out));
}

TEST_F(InfoOutput, JobsKeepTheOrderOfTheNames) {
  write("a.jpg", exifJpeg("Maker"));
  const Outcome outcome =
      run("seq 600 | sed 's/.*5$/a.jpg/' >names; for form in --json --json-lines --csv --gps; do "
          "for j in 1 3; do $E info $form -j $j - <names >out$j 2>err$j; done; "
          "test -s out3 && cmp out1 out3 && cmp err1 err3 || exit 9; done");
  EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
  EXPECT_EQ(run("$E info --json-lines -j 3 a.jpg a.jpg a.jpg >/dev/full").status, 3);
}

TEST_F(InfoOutput, IsForProgramsToo) {
  const Picture picture{
      .image = {exifPointer(), gpsPointer(), text(0x10F, "a, \"b\"")},
      .exif = {bytes(0x9000, "0220"), rationals(0x829A, {1, 60}), bytes(0x9286, "12345678x")},
      .gps = {rationals(2, {43, 1, 28, 1, 5, 2}), bytes(5, {1}, typeByte)}};
  std::filesystem::create_directories(path("all/b"));
  write("all/b/1.JPG", jpegBytes(tiffBytes(picture, Order::ii)));
  write("all/2.jpg", exifJpeg("Maker", "NOTE.WAV"));
  write("all/note.txt", "");
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"info -r --csv --tag make,0x829A,GPSAltitudeRef all",
       "file,make,0x829A,GPSAltitudeRef\nall/2.jpg,Maker,,\n"
       "all/b/1.JPG,\"a, \"\"b\"\"\",1/60 (seconds),1\n"},
      {"info --csv --gps all/b/1.JPG all/2.jpg",
       "file,Make,ExposureTime,ExifVersion,UserComment,GPSLatitude,GPSAltitudeRef,"
       "RelatedSoundFile\n"
       "all/b/1.JPG,\"a, \"\"b\"\"\",1/60 (seconds),2.20,x,43 28 5/2,1,\n"
       "all/2.jpg,Maker,,2.20,,,,NOTE.WAV\n"},
      {"info --tag ExifVersion --tag 271 all/2.jpg", "Make          Maker\nExif Version  2.20\n"},
  };
  for (const auto& [arguments, out] : cases)
    EXPECT_EQ(run(std::string("$E ") + arguments).out, out) << arguments;
  std::vector<json> raw;
  const json answer = json::parse(run("$E info --json --gps all/b/1.JPG").out);
  for (const json& item : answer[0]["items"]) raw.push_back(item["raw"]);
  EXPECT_EQ(json(raw), json::parse(R"(["a, \"b\"", [1, 60], "0220", "MTIzNDU2Nzh4",
                                       [[43, 1], [28, 1], [5, 2]], 1])"));
  const std::string schema = "jsonschema \"" EXIFKEEP_SOURCE_DIR "/docs/json-output.schema.json\"";
  const bool validates = run("python3 -c 'import jsonschema'").status == 0;
  for (const std::string command : {"info --gps", "check", "version", "sound"}) {
    run("$E " + command + " --json all/b/1.JPG all/2.jpg all gone >out.json");
    EXPECT_EQ(json::parse(read("out.json")).size(), 4u) << command;
    EXPECT_EQ(validates ? run("python3 -m " + schema + " -i out.json").status : 0, 0) << command;
  }
}

TEST_F(InfoOutput, LanguageComesFromTheTagElseFromTheEnvironment) {
  write("a.jpg", exifJpeg("Maker"));
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"LC_ALL=C $E info --lang ja a.jpg", "\u30E1\u30FC\u30AB\u30FC"},
      {"LC_ALL=C LANGUAGE=de $E info a.jpg", "Make "},
      {"LC_ALL=fi_FI.UTF-8 LANGUAGE=xx:nl $E info a.jpg", "Fabrikant "},
      {"LC_ALL=ja_JP.eucJP $E info --json a.jpg", "\u30E1\u30FC\u30AB\u30FC"},
      {"$E languages", "zh-TW  \u7E41\u9AD4\u4E2D\u6587\n"},
  };
  for (const auto& [command, label] : cases)
    EXPECT_THAT(run(command).out, HasSubstr(label)) << command;
}

TEST(OutputText, InvalidBytesAndControlsAreEscapedOrReplaced) {
  const std::vector<std::array<std::string, 3>> cases = {
      {"\u00DF \u65E5\U0001F4F7 \\ \"", "\u00DF \u65E5\U0001F4F7 \\ \"",
       "\u00DF \u65E5\U0001F4F7 \\ \""},
      {"a\nb\tc\rd\x1B[31m\x7F", "a\\nb\\tc\\rd\\x1b[31m\\x7f", "a\nb\tc\rd\x1B[31m\x7F"},
      {"\u009B2J\u202Ereversed", "\\u009b2J\\u202ereversed", "\u009B2J\u202Ereversed"},
      // Every longest run that could begin a character counts once (Unicode 15, section 3.9).
      {"\xFF\x80", "\\xff\\x80", "\uFFFD\uFFFD"},
      {"\xE2\x82x", "\\xe2\\x82x", "\uFFFDx"},
      {"\xED\xA0\x80", "\\xed\\xa0\\x80", "\uFFFD\uFFFD\uFFFD"},
      {"\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xE0\x9F\xBF\xE1", "\\xe0\\x9f\\xbf\\xe1", "\uFFFD\uFFFD\uFFFD\uFFFD"},
  };
  for (const auto& [text, terminal, expected] : cases) {
    EXPECT_EQ(program::escapeForTerminal(text), terminal);
    std::string written;
    program::JsonWriter(written).text(text);
    EXPECT_EQ(json::parse(written).get<std::string>(), expected) << written;
    for (const unsigned char byte : written) EXPECT_TRUE(byte >= 0x20 && byte != 0x7F) << written;
  }
}

TEST(OutputText, WidthCountsTerminalColumns) {
  const std::vector<std::pair<std::string, int>> cases = {
      {"Bildaufl\u00F6sung", 13},      {"Bildauflo\u0308sung", 13},  // combining diaeresis
      {"\u753B\u50CF\u65B9\u5411", 8},                               // ideographs
      {"\uB178\u1112\u1161\u11AB", 4},  // a Hangul syllable, and one in letters
      {"\u30AB\u3099\uFF76\uFF9E", 4},  // kana with a voice mark, half-width kana
      {"\U0001F4F7\uFE0F", 2},          // pictograph with a variation selector
  };
  for (const auto& [text, width] : cases) EXPECT_EQ(program::displayWidth(text), width) << text;
}

}  // namespace
}  // namespace exifkeep::test

// exifkeep info: the table, JSON and languages, on files whose texts are hostile.
#include <gmock/gmock.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "program/exif_fixture.h"
#include "program/shell.h"

namespace exifkeep::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

TEST(InfoTable, IsAlignedUnderEachFilesName) {
  Shell shell;
  shell.write("a.jpg", exifJpeg("Maker A"));
  shell.write("b.jpg", exifJpeg("Maker B"));
  EXPECT_EQ(shell.run("$E info a.jpg").out,
            "Make          Maker A\n"
            "Exif Version  2.20\n");
  EXPECT_EQ(shell.run("$E info a.jpg gone.jpg b.jpg").out,
            "a.jpg\n"
            "  Make          Maker A\n"
            "  Exif Version  2.20\n"
            "\n"
            "b.jpg\n"
            "  Make          Maker B\n"
            "  Exif Version  2.20\n");
}

TEST(InfoTable, SendsNothingHostileToTheTerminal) {
  Shell shell;
  shell.write("a\x1B[2J.jpg", exifJpeg("\x1B]0;owned\x07 100%s\r\xFF"));
  const Outcome outcome = shell.run("$E info a*.jpg gone.jpg");
  EXPECT_THAT(outcome.out, HasSubstr("a\\x1b[2J.jpg\n"));
  EXPECT_THAT(outcome.out, HasSubstr("\\x1b]0;owned\\x07 100%s\\r\\xff\n"));
  EXPECT_THAT(shell.run("$E info \"$(printf 'gone\\033[2J')\"").err, HasSubstr("gone\\x1b[2J: "));
}

TEST(InfoJson, IsValidWhateverTheBytes) {
  Shell shell;
  const std::string name = "n\xE4me \"1\"\n.jpg";
  shell.write(name, exifJpeg("\x01\"\\\xC3\xBC\xED\xA0\x80"));
  shell.write("plain.jpg", "");
  const Outcome outcome = shell.run("$E info --json n*.jpg plain.jpg gone.jpg");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("gone.jpg: No such file"));
  const json expected = json::parse(R"([
    {"file": "n\ufffdme \"1\"\n.jpg", "exif": true, "items": [
      {"label": "Make", "value": "\u0001\"\\\u00fc\ufffd\ufffd\ufffd"},
      {"label": "Exif Version", "value": "2.20"}]},
    {"file": "plain.jpg", "exif": false, "items": []},
    {"file": "gone.jpg", "exif": false, "items": []}])");
  EXPECT_EQ(json::parse(outcome.out), expected) << outcome.out;
}

TEST(InfoLanguage, ComesFromTheTagElseFromTheEnvironment) {
  Shell shell;
  shell.write("a.jpg", exifJpeg("Maker"));
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"$E info a.jpg", "Make "},
      {"$E info --lang de a.jpg", "Hersteller "},
      {"$E info --lang zh-TW a.jpg", "\u88FD\u9020\u5546"},
      {"LC_ALL=C $E info --lang ja a.jpg", "\u30E1\u30FC\u30AB\u30FC"},
      {"LC_ALL=C LANGUAGE=de $E info a.jpg", "Make "},
      {"LC_ALL=fi_FI.UTF-8 $E info a.jpg", "Valmistaja"},
      {"LC_ALL=fi_FI.UTF-8 LANGUAGE=xx:nl $E info a.jpg", "Fabrikant "},
      {"LC_ALL=ja_JP.eucJP $E info a.jpg | iconv -f EUC-JP -t UTF-8", "\u30E1\u30FC\u30AB\u30FC"},
      {"LC_ALL=ja_JP.eucJP $E info --json a.jpg", "\u30E1\u30FC\u30AB\u30FC"},
  };
  for (const auto& [command, label] : cases) {
    EXPECT_THAT(shell.run(command).out, HasSubstr(label)) << command;
  }
}

TEST(Languages, AreThirteenWithTheirOwnNames) {
  const std::string out = Shell().run("$E languages").out;
  EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 13) << out;
  for (const char* line :
       {"de     Deutsch\n", "zh-TW  \u7E41\u9AD4\u4E2D\u6587\n", "pt     Portugu\u00EAs\n"}) {
    EXPECT_THAT(out, HasSubstr(line));
  }
}

}  // namespace
}  // namespace exifkeep::test

// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <language.h>
#include <sys/wait.h>

#include <csignal>
#include <nlohmann/json.hpp>
#include <sstream>
#include <vector>

#include "codec/picture_fixture.h"
#include "escape.h"
#include "json_writer.h"
#include "other_metadata.h"
#include "system.h"
#include "text_table.h"

namespace exifkeep::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

struct Outcome {
  int status;  // the exit status, or -1 if a signal killed the command
  std::string out, err;
};

// Runs shell commands in its folder, in English and UTF-8; $E is the program.
class ShellTest : public ScratchTest {
 protected:
  // Assignments before the program's name in `command` set its environment.
  Outcome run(const std::string& command) const {
    const std::string line = "cd '" + path("") +
                             "' && unset LANGUAGE LC_MESSAGES LC_CTYPE; export LC_ALL=C.UTF-8 E='" +
                             EXIFKEEP_PROGRAM + "'; { " + command + "\n} >.out 2>.err </dev/null";
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read(".out"), read(".err")};
  }
  void write(const std::string& name, const std::string& bytes) const {
    writeFile(path(name), bytes);
  }
  std::string read(const std::string& name) const { return readFile(path(name)); }
};

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

TEST_F(InfoOutput, HasNamesAndStoredValuesForPrograms) {
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
  for (const std::string command : {"info --gps --json", "check --json", "version --json",
                                    "sound --json", "languages --json #"}) {
    run("$E >out.json " + command + " all/b/1.JPG all/2.jpg all gone");
    EXPECT_GE(json::parse(read("out.json")).size(), 4u) << command;
    EXPECT_EQ(validates ? run("python3 -m " + schema + " -i out.json").status : 0, 0) << command;
  }
}

TEST(OutputText, InvalidBytesAndControlsAreEscapedOrReplaced) {
  const std::vector<std::array<std::string, 3>> cases = {
      {"\u00DF \u65E5\U0001F4F7 \\ \"", "\u00DF \u65E5\U0001F4F7 \\ \"",
       "\u00DF \u65E5\U0001F4F7 \\ \""},
      {"a\nb\tc\rd\x1B[31m\x7F", "a\\nb\\tc\\rd\\x1b[31m\\x7f", "a\nb\tc\rd\x1B[31m\x7F"},
      {"\u009B2J\u202Ereversed", "\\u009b2J\\u202ereversed", "\u009B2J\u202Ereversed"},
      {"1234567\"", "1234567\"", "1234567\""},
      {"\\1234567", "\\1234567", "\\1234567"},
      {"1234567\x1F", "1234567\\x1f", "1234567\x1F"},
      {"12345678\x7F", "12345678\\x7f", "12345678\x7F"},
      {"\x7F", "\\x7f", "\x7F"},
      {"\\", "\\", "\\"},
      // Each longest run that could begin a character is replaced once (Unicode 15, section 3.9).
      {"\xFF\x80", "\\xff\\x80", "\uFFFD\uFFFD"},
      {"\xE2\x82x", "\\xe2\\x82x", "\uFFFDx"},
      {"\xED\xA0\x80", "\\xed\\xa0\\x80", "\uFFFD\uFFFD\uFFFD"},
      {"\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xE0\x9F\xBF\xE1", "\\xe0\\x9f\\xbf\\xe1", "\uFFFD\uFFFD\uFFFD\uFFFD"},
  };
  for (const auto& [text, terminal, expected] : cases) {
    EXPECT_EQ(program::escapeForTerminal(text), terminal);
    program::JsonWriter writer;
    writer.text(text);
    const std::string written(writer.written());
    EXPECT_EQ(json::parse(written).get<std::string>(), expected) << written;
    for (const unsigned char byte : written) EXPECT_TRUE(byte >= 0x20 && byte != 0x7F) << written;
  }
}

TEST(OutputText, WidthCountsTerminalColumns) {
  const std::vector<std::pair<std::string, int>> cases = {
      {"Bildaufl\u00F6sung", 13},      {"Bildauflo\u0308sung", 13},  // combining diaeresis
      {"\u753B\u50CF\u65B9\u5411", 8},                               // ideographs
      {"\uB178\u1112\u1161\u11AB", 4},  // a Hangul syllable, precomposed and as letters
      {"\u30AB\u3099\uFF76\uFF9E", 4},  // kana with a voice mark, half-width kana
      {"\U0001F4F7\uFE0F", 2},          // pictograph with a variation selector
  };
  for (const auto& [text, width] : cases) EXPECT_EQ(program::displayWidth(text), width) << text;
}

class InfoSheet : public ShellTest {
 protected:
  InfoSheet() {
    PRaster image = patterned(24, 640, 320);
    EXPECT_EQ(save(path("plain.jpg"), image), 1);
    write("a<b>&\"'.jpg", exifJpeg("\"'><img src=x onerror=hit()>&\x01\xFF\xE2\x82"));
  }
};

TEST_F(InfoSheet, IsCompleteEscapedAndInAllLanguages) {
  const Outcome outcome = run("$E info --html --lang sv a*.jpg plain.jpg gone.jpg -o sheet.html");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("plain.jpg: not an Exif"), HasSubstr("gone.jpg: No")));
  const std::string html = read("sheet.html");
  EXPECT_THAT(html, AllOf(HasSubstr("<html lang=\"sv\">"),
                          HasSubstr("&quot;&#39;&gt;&lt;img src=x onerror=hit()&gt;&amp;"
                                    "\uFFFD\uFFFD\uFFFD</td>"),
                          HasSubstr("alt=\"plain.jpg\""), Not(HasSubstr("://"))));
  EXPECT_EQ(run("$E info --html --lang sv a*.jpg plain.jpg gone.jpg -o -").out, html);
  const size_t data = html.find("json\">") + 6, row = html.find("<tr>");
  const auto texts = json::parse(html.substr(data, html.find("</script", data) - data));
  const int number = std::stoi(html.substr(html.find("data-text=\"", row) + 11));
  for (const LanguageVariant& variant : languageVariants()) {
    const std::string tag(variant.tag), listed = run("$E info --lang " + tag + " a*.jpg").out;
    EXPECT_EQ(texts[tag][number], listed.substr(0, listed.find("  ")));
    EXPECT_THAT(html, HasSubstr(std::string(variant.name) + "</option>"));
  }
  EXPECT_EQ(texts["de"][0], "Bildeigenschaften");
  EXPECT_THAT(html, HasSubstr("<title data-text=\"0\">Bildegenskaper</title>"));
  // Browsers run and apply nothing whose hash the page does not give; all tags are closed.
  EXPECT_EQ(run("python3 -c 'import re, hashlib, base64, xml.dom.minidom; "
                "page = open(\"sheet.html\").read(); xml.dom.minidom.parseString("
                "re.sub(\"(?s)<(script|style).*?</[a-z]+>\", \"\", page)); "
                "print([base64.b64encode(hashlib.sha256(part.encode()).digest()).decode() in page "
                "for part in re.findall(\"<(?:style|script)>(.*?)</\", page, re.S)])'")
                .out,
            "[True, True]\n");
}

// In orientation 6 the stored top row is at the visible right.
TEST_F(InfoSheet, ShowsTheFactsAndTurnsThePicture) {
  const Picture picture{.image = {exifPointer(), text(0x110, "Camera 7"), shorts(0x112, {6})},
                        .exif = {bytes(0x9000, "0220"), rationals(0x829A, {1, 60}),
                                 rationals(0x829D, {28, 10}), shorts(0x8827, {400}),
                                 text(0x9003, "2002:05:14 10:20:30"), rationals(0x920A, {50, 1})}};
  write("a.jpg", withPixels(jpegBytes(tiffBytes(picture, Order::mm)), read("plain.jpg")));
  write("preview.jpg", "mine");  // must not be touched, even without a usable temporary folder
  const std::string html = run("TMPDIR=/" + std::string(300, '/') + "tmp $E info --html a.jpg").out;
  EXPECT_EQ(read("preview.jpg"), "mine");
  const std::string facts = html.substr(0, html.find("<table>"));
  for (const char* fact :
       {">Camera 7<", ">2002/05/14 10:20:30<", ">seconds</small>", ">1/60 <small", ">2.8<", ">400<",
        ">50.0 <small lang=\"\">mm<", "width=\"160\" height=\"320\""})
    EXPECT_THAT(facts, HasSubstr(fact));
  write("sheet.html", html);
  run("sed -n 's/.*base64,\\([^\"]*\\)\".*/\\1/p' sheet.html | base64 -d >preview.jpg");
  PRaster original = patterned(24, 640, 320);
  const std::optional<PRaster> preview = load(path("preview.jpg"));
  ASSERT_TRUE(preview);
  for (const auto& [x, y] : {std::pair{0, 0}, {159, 0}, {159, 319}})
    for (const int shift : {0, 8, 16})
      EXPECT_NEAR(preview->GetPixel(x, y) >> shift & 0xFF,
                  original.GetPixel(2 * y, 319 - 2 * x) >> shift & 0xFF, 12);
}

TEST_F(InfoSheet, SaysThatAPictureIsDamaged) {
  const std::string whole = read("plain.jpg"), damaged = "The picture is damaged";
  EXPECT_THAT(run("$E info --html plain.jpg").out, Not(HasSubstr(damaged)));
  write("cut.jpg", whole.substr(0, whole.size() / 2));
  EXPECT_THAT(run("$E info --html cut.jpg").out, AllOf(HasSubstr("<img"), HasSubstr(damaged)));
}

using OtherMetadata = ShellTest;

TEST_F(OtherMetadata, IsNamed) {
  using namespace std::string_literals;
  const auto jpeg = [](const std::string& segments) { return jpegStart + segments + jpegEnd; };
  const auto chunk = [](const std::string& type, const std::string& content) {
    return number(content.size(), 4, Order::mm) + type + content + "CRC ";
  };
  const auto imageResource = [](char id) { return "8BIM\4"s + id + "\0\0\0\0\0\1x\0"s; };
  const std::string photoshop = "Photoshop 3.0\0"s + imageResource(3), png = "\x89PNG\r\n\x1A\n";
  const std::string hello = segment(0xFFFE, "hello");
  const Picture tiff = {.image = {bytes(700, "<x/>"), bytes(33723, "x"), bytes(34675, "x")}};
  const std::vector<std::pair<std::string, const char*>> cases = {
      {exifJpeg("Maker"), ""},
      {jpeg(hello + segment(0xFFE2, "ICC_PROFILE\0\1\1"s)), "ICC profile, comment"},
      {jpeg(segment(0xFFE1, "http://ns.adobe.com/xap/1.0/\0<x/>"s)), "XMP"},
      {jpeg(segment(0xFFED, photoshop + imageResource(4))), "IPTC"},
      {jpeg(segment(0xFFED, photoshop)), ""},
      {jpeg(segment(0xFFED, photoshop + "8BIM\4\5\xFF")), ""},
      {jpeg(segment(0xFFDA, "") + hello), ""},  // part of the scan
      {tiffBytes(tiff, Order::ii), "ICC profile, XMP, IPTC"},
      {tiffBytes(tiff, Order::mm), "ICC profile, XMP, IPTC"},
      {png + chunk("iCCP", "x") + chunk("IDAT", "tEXt") + chunk("tEXt", "a\0b"s),
       "ICC profile, comment"},
      {png + chunk("iTXt", "XML:com.adobe.xmp\0\0\0\0\0<x/>"s), "XMP"},
  };
  for (const auto& [file, kinds] : cases) {
    write("file", file);
    EXPECT_EQ(program::otherMetadata(path("file")), kinds) << testing::PrintToString(file);
  }
}

// The tests of interrupted saves check that the program then ends after the call.
TEST(EndingDelay, ASignalWaitsForTheCallUnlessItIsIgnored) {
  std::signal(SIGHUP, SIG_IGN);  // as nohup does
  {
    const program::EndingDelay delay;
    { const program::EndingDelay inner; }
    std::raise(SIGHUP);
    EXPECT_FALSE(program::endingWaits());
    EXPECT_EXIT((std::raise(SIGTERM), std::_Exit(program::endingWaits())),
                testing::ExitedWithCode(1), "");
  }
  std::signal(SIGHUP, SIG_DFL);
}

}  // namespace
}  // namespace exifkeep::test

// exifkeep info --html: a page that is whole, safe and in thirteen languages.
#include <gmock/gmock.h>
#include <language.h>

#include <nlohmann/json.hpp>

#include "codec/picture_fixture.h"
#include "program/exif_fixture.h"
#include "program/shell.h"

namespace exifkeep::test {
namespace {

using testing::HasSubstr;
using testing::Not;

// The first tag that is out of place; nothing when all are closed in their order.
std::string misplacedTag(std::string_view html) {
  std::vector<std::string_view> open;
  for (size_t at = html.find("<html"); at != html.npos;) {
    const std::string_view tag = html.substr(at + 1, html.find('>', at) - at - 1);
    if (tag.starts_with('/')) {
      if (open.empty() || open.back() != tag.substr(1)) return std::string(tag);
      open.pop_back();
    } else if (!tag.ends_with('/')) {
      open.push_back(tag.substr(0, tag.find(' ')));
    }
    at = html.find(tag == "script" ? "</script" : "<", at + 1);
  }
  return open.empty() ? "" : std::string(open.back());
}

class InfoSheet : public ShellTest {
 protected:
  InfoSheet() {
    PRaster image = patterned(24, 640, 320);
    EXPECT_EQ(save(path("plain.jpg"), image), 1);
    write("a<b>&\"'.jpg", exifJpeg("\"'><img src=x onerror=hit()>&\x01\xFF\xE2\x82"));
  }
};

TEST_F(InfoSheet, IsWholeEscapedAndInAllLanguages) {
  const Outcome outcome = run("$E info --html --lang sv a*.jpg plain.jpg gone.jpg -o sheet.html");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("plain.jpg: not an Exif"), HasSubstr("gone.jpg: No")));
  const std::string html = read("sheet.html");
  EXPECT_EQ(misplacedTag(html), "");
  EXPECT_THAT(html, AllOf(HasSubstr("<html lang=\"sv\">"),
                          HasSubstr("&quot;&#39;&gt;&lt;img src=x onerror=hit()&gt;&amp;"
                                    "\uFFFD\uFFFD\uFFFD</td>"),
                          HasSubstr("alt=\"plain.jpg\""), Not(HasSubstr("://"))));
  EXPECT_EQ(run("$E info --html --lang sv a*.jpg plain.jpg gone.jpg -o -").out, html);
  const size_t data = html.find("json\">") + 6, row = html.find("<tr>");
  const auto texts = nlohmann::json::parse(html.substr(data, html.find("</script", data) - data));
  const int number = std::stoi(html.substr(html.find("data-text=\"", row) + 11));
  for (const LanguageVariant& variant : languageVariants()) {
    const std::string tag(variant.tag), listed = run("$E info --lang " + tag + " a*.jpg").out;
    EXPECT_EQ(texts[tag][number], listed.substr(0, listed.find("  ")));
    EXPECT_THAT(html, HasSubstr(std::string(variant.name) + "</option>"));
  }
  EXPECT_EQ(texts["de"][0], "Bildeigenschaften");
  EXPECT_THAT(html, HasSubstr("<title data-text=\"0\">Bildegenskaper</title>"));
  // Browsers run and apply nothing whose hash the page does not give.
  EXPECT_EQ(run("python3 -c 'import re, hashlib, base64; page = open(\"sheet.html\").read(); "
                "print([base64.b64encode(hashlib.sha256(part.encode()).digest()).decode() in page "
                "for part in re.findall(\"<(?:style|script)>(.*?)</\", page, re.S)])'")
                .out,
            "[True, True]\n");
}

// In orientation 6 the stored top is seen at the right.
TEST_F(InfoSheet, ShowsTheFactsAndTurnsThePicture) {
  const Picture picture{.image = {exifPointer(), text(0x110, "Camera 7"), shorts(0x112, {6})},
                        .exif = {bytes(0x9000, "0220"), rationals(0x829A, {1, 60}),
                                 rationals(0x829D, {28, 10}), shorts(0x8827, {400}),
                                 text(0x9003, "2002:05:14 10:20:30"), rationals(0x920A, {50, 1})}};
  write("a.jpg", withPixels(jpegBytes(tiffBytes(picture, Order::mm)), read("plain.jpg")));
  write("preview.jpg", "mine");  // not to be touched, even without a usable temporary folder
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

TEST_F(InfoSheet, SaysThatAPreviewIsDamaged) {
  const std::string whole = read("plain.jpg"), damaged = "The picture is damaged";
  EXPECT_THAT(run("$E info --html plain.jpg").out, Not(HasSubstr(damaged)));
  write("cut.jpg", whole.substr(0, whole.size() / 2));
  EXPECT_THAT(run("$E info --html cut.jpg").out, AllOf(HasSubstr("<img"), HasSubstr(damaged)));
}

TEST_F(InfoSheet, FailsWithoutATrace) {
  run("printf old >old.html");
  const auto before = names();
  for (const char* out : {"gone/sheet.html", "plain.jpg", ".", "/dev/full", "old.html"})
    EXPECT_EQ(
        run(std::string("trap '' XFSZ; ulimit -f 4; $E info --html plain.jpg -o ") + out).status, 3)
        << out;
  EXPECT_EQ(read("old.html"), "old");
  EXPECT_EQ(names(), before);
}

}  // namespace
}  // namespace exifkeep::test

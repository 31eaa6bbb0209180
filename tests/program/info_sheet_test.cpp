// exifkeep info --html: a page that is whole, safe and in thirteen languages, as text and as a
// browser shows it.
#include <gmock/gmock.h>
#include <language.h>
#include <praster.h>
#include <pxcodec32.h>

#include <vector>

#include "program/exif_fixture.h"
#include "program/shell.h"

namespace exifkeep::test {
namespace {

using testing::HasSubstr;
using testing::Not;

// The first tag that is out of place; nothing when all are closed in their order.
std::string misplacedTag(std::string_view html) {
  std::vector<std::string_view> open;
  for (std::size_t at = html.find("<html"); at != html.npos;) {
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
    PRaster image;
    image.CreateImage(PRaster::type24Bit, 640, 320);
    tagLmmInfo memory;
    image.GetLmmInfo(memory);
    AllSaveDIBImg(path("plain.jpg").c_str(), &memory, 0, nullptr);
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
  EXPECT_EQ(run("$E info --html --lang sv a*.jpg plain.jpg gone.jpg").out, html);
  for (const LanguageVariant& variant : languageVariants()) {
    const std::string tag(variant.tag), start = "<span lang=\"" + tag + "\">";
    const std::string listed = run("$E info --lang " + tag + " a*.jpg").out;
    EXPECT_THAT(html, HasSubstr(start + listed.substr(0, listed.find("  ")) + "</span>"));
    EXPECT_THAT(html, HasSubstr(std::string(variant.name) + "</option>"));
  }
}

TEST_F(InfoSheet, FailsWithoutATrace) {
  write("old.html", "old");
  const auto before = names();
  for (const char* out : {"gone/sheet.html", "plain.jpg", ".", "/dev/full", "old.html"})
    EXPECT_EQ(
        run(std::string("trap '' XFSZ; ulimit -f 4; $E info --html plain.jpg -o ") + out).status, 3)
        << out;
  EXPECT_EQ(read("old.html"), "old");
  EXPECT_THAT(read("plain.jpg"), testing::StartsWith("\xFF\xD8"));
  auto after = names();
  after.erase(".out"), after.erase(".err");
  EXPECT_EQ(after, before);
}

// The page itself runs in the browser, with a last script that uses the switch as a reader would.
// Without the page's own policy, whatever it asked the network for would be seen.
TEST_F(InfoSheet, SwitchesLanguageInABrowserAndFetchesNothing) {
  const std::string browser =
      "timeout 90 $(command -v chromium || command -v chromium-browser || command -v google-chrome)"
      " --headless --no-sandbox --disable-gpu --user-data-dir=\"$PWD/profile\" --dump-dom ";
  if (run(browser + "about:blank").status != 0) GTEST_SKIP() << "no browser";
  run("$E info --html --lang de plain.jpg a*.jpg -o sheet.html");
  std::string html = read("sheet.html");
  const std::size_t policy = html.find("<meta http-equiv");
  html.erase(policy, html.find("/>", policy) + 2 - policy);
  html.insert(html.find("</body>"), R"(<pre></pre><script>
    const seen = [], look = () => seen.push(document.querySelector("th").innerText);
    const choice = document.querySelector("select"), image = document.querySelector("img");
    look();
    seen.push(choice.value, choice.options.length, choice.offsetWidth > 0);
    choice.value = "ja"; choice.dispatchEvent(new Event("change")); look();
    seen.push(document.documentElement.lang, document.images.length);
    addEventListener("load", () => {
      seen.push(image.naturalWidth, image.naturalHeight);
      const fetched = performance.getEntriesByType("resource").map((entry) => entry.name);
      seen.push(fetched.filter((name) => !name.startsWith("data:")).length);
      document.querySelector("pre").textContent = seen.join("|");
    });</script>)");
  write("sheet.html", html);
  EXPECT_THAT(
      run(browser + "\"file://$PWD/sheet.html\"").out,
      HasSubstr("<pre>Hersteller|de|13|true|\u30E1\u30FC\u30AB\u30FC\u540D|ja|1|320|160|0<"));
}

}  // namespace
}  // namespace exifkeep::test

// CString: cutting, searching, formatting under a locale that writes decimal commas.
#include <afx.h>
#include <platform/scratch.h>

#include <clocale>

namespace exifkeep::test {
namespace {

TEST(String, CutsAndClamps) {
  const CString text = "picture.jpg";
  EXPECT_EQ(text.Left(3) + "|" + text.Left(99) + "|" + text.Left(-1), "pic|picture.jpg|");
  EXPECT_EQ(text.Right(3) + "|" + text.Right(99) + "|" + text.Right(-1), "jpg|picture.jpg|");
  EXPECT_EQ(text.Mid(8) + "|" + text.Mid(99) + "|" + text.Mid(-5), "jpg||picture.jpg");
  EXPECT_EQ(text.Mid(4, 3) + "|" + text.Mid(8, 99) + "|" + text.Mid(8, -1), "ure|jpg|");
  EXPECT_EQ(CString("abc", 2), "ab");
  EXPECT_EQ(CString("ab\0cd", 5).GetLength(), 2);
}

TEST(String, FindsReplacesAndSets) {
  CString text = "a.b.c";
  EXPECT_EQ(text.Find('.', 2), 3);
  EXPECT_EQ(text.Find('.', 99), -1);
  EXPECT_EQ(text.Find(".c"), 3);
  EXPECT_EQ(text.Replace('.', '/'), 2);
  text.SetAt(0, 'A');
  text.SetAt(5, 'x');
  EXPECT_EQ(text, "A/b/c");
  EXPECT_TRUE(text.GetAt(5) == '\0' && text.GetAt(-1) == '\0' && text[4] == 'c');
  text.SetAt(1, '\0');
  text += 'z';
  text += text;
  EXPECT_EQ("<" + text + ">", "<AzAz>");
  EXPECT_TRUE(text < "B" && "A" < text && text < CString("\x80"));
}

TEST(String, FormatsDataAsData) {
  CString text = "5,5";
  text.Format("%s|%d/%ld (%s)|%c|%05.1f", static_cast<const char*>(text), -1, 2L, "%n 1,5 %s", 'x',
              2.25);
  EXPECT_EQ(text, "5,5|-1/2 (%n 1,5 %s)|x|002.2");
  for (const std::size_t length : {0u, 255u, 256u, 5000u}) {
    const std::string long_(length, 'y');
    text.Format("%s", long_.c_str());
    EXPECT_EQ(text, long_.c_str()) << length;
  }
}

// Makes the process use a locale with decimal commas, building one if the system has none.
bool enterCommaLocale(const std::string& directory) {
  if (std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr) return true;
  const std::string build = "localedef -i de_DE -f UTF-8 '" + directory + "/de_DE.UTF-8'";
  if (std::system((build + " >/dev/null 2>&1").c_str()) != 0) return false;
  setenv("LOCPATH", directory.c_str(), 1);
  return std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
}

using StringInLocale = ScratchTest;

TEST_F(StringInLocale, NumbersHavePointsAndTheLocaleStays) {
  if (!enterCommaLocale(path(""))) GTEST_SKIP() << "no locale with a decimal comma can be made";
  CString text;
  text.Format("%.1f %s", 2.5, "1,5");
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "%.1f", 2.5);
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ(text, "2.5 1,5");
  EXPECT_STREQ(buffer, "2,5");
}

}  // namespace
}  // namespace exifkeep::test

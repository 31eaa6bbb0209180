// Strings and lists.
#include <afx.h>
#include <afxcoll.h>
#include <platform/scratch.h>

#include <clocale>
#include <vector>

namespace exifkeep::test {
namespace {

TEST(String, CutsFindsAndReplaces) {
  CString text("a.b.c!", 5);
  EXPECT_EQ(text.Left(3) + "|" + text.Left(99) + "|" + text.Left(-1), "a.b|a.b.c|");
  EXPECT_EQ(text.Right(3) + "|" + text.Right(99) + "|" + text.Right(-1), "b.c|a.b.c|");
  EXPECT_EQ(text.Mid(3) + "|" + text.Mid(99) + "|" + text.Mid(1, 2), ".c||.b");
  EXPECT_TRUE(text.Find('.', 2) == 3 && text.Find('.', 99) == -1 && text.Find(".c") == 3);
  EXPECT_EQ(text.Replace('.', '/'), 2);
  text += text;
  EXPECT_EQ("<" + text + ">", "<a/b/ca/b/c>");
  const std::string_view view = text;
  EXPECT_EQ(std::string(text), view);
  EXPECT_TRUE(text < "b" && "A" < text && text < CString("\x80") && text.GetAt(-1) == '\0');
}

// Makes the process use a locale with decimal commas, building one if the system has none.
bool enterCommaLocale(const std::string& directory) {
  for (const char* name : {"de_DE.UTF-8", "German_Germany.1252"}) {
    if (std::setlocale(LC_ALL, name) != nullptr) return true;
  }
  const std::string build = "localedef -i de_DE -f UTF-8 '" + directory + "/de_DE.UTF-8'";
  if (std::system((build + " >/dev/null 2>&1").c_str()) != 0) return false;
  setVariable("LOCPATH", directory);
  return std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
}

using FormatTest = ScratchTest;

TEST_F(FormatTest, DataStaysDataNumbersHavePointsAndTheLocaleStays) {
  CString text = "5,5";
  text.Format("%s|%d/%ld (%s)|%c", static_cast<const char*>(text), -1, 2L, "%n %s", 'x');
  EXPECT_EQ(text, "5,5|-1/2 (%n %s)|x");
  for (const std::size_t length : {255u, 256u}) {
    const std::string longer(length, 'y');
    text.Format("%s", longer.c_str());
    EXPECT_EQ(text, longer.c_str()) << length;
  }
  if (!enterCommaLocale(path(""))) GTEST_SKIP() << "no locale with a decimal comma can be made";
  text.Format("%05.1f %s", 2.25, "1,5");
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "%.1f", 2.5);
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ(text, "002.2 1,5");
  EXPECT_STREQ(buffer, "2,5");
}

TEST(PtrList, KeepsItsOrderBothWays) {
  int n[6];
  CPtrList list;
  for (int i : {2, 1, 0}) list.AddHead(n + i);
  for (int i : {3, 4, 5}) list.AddTail(n + i);
  POSITION at = list.GetHeadPosition();
  list.GetNext(at);
  list.RemoveAt(at);
  EXPECT_TRUE(list.RemoveHead() == n && list.RemoveTail() == n + 5 && list.GetCount() == 3);
  EXPECT_EQ(CPtrList().RemoveTail(), nullptr);
  std::vector<void*> forwards, backwards;
  for (void* element : list) forwards.push_back(element);
  for (at = list.GetTailPosition(); at != nullptr;) backwards.push_back(list.GetPrev(at));
  EXPECT_EQ(forwards, (std::vector<void*>{n + 2, n + 3, n + 4}));
  EXPECT_EQ(backwards, (std::vector<void*>{n + 4, n + 3, n + 2}));
}

}  // namespace
}  // namespace exifkeep::test

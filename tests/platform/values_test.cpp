// SPDX-License-Identifier: MIT
#include <afx.h>
#include <afxcoll.h>
#include <gtest/gtest.h>

#include <string>
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

// Short and long texts are kept in different places.
TEST(String, KeepsTextsOfAllLengths) {
  for (const size_t length : {0u, 15u, 30u, 31u, 300u}) {
    const std::string given(length, 'y');
    CString text(given.c_str()), copy = text, moved = std::move(copy);
    EXPECT_EQ(std::string(moved), given);
    text += static_cast<const char*>(text);
    text += 'z';
    EXPECT_EQ(std::string(text), given + given + 'z');
    text.SetAt(0, 'x');
    moved = text;
    EXPECT_TRUE(moved == text && moved[0] == 'x' &&
                std::string_view(text).data()[2 * length + 1] == 0);
  }
}

TEST(String, FormatsDataAsItIs) {
  CString text = "5,5";
  text.Format("%s|%d/%ld (%s)|%.1f", static_cast<const char*>(text), -1, 2L, "%n %s", 2.25);
  EXPECT_EQ(text, "5,5|-1/2 (%n %s)|2.2");
  for (const size_t length : {255u, 256u}) {
    const std::string longer(length, 'y');
    text.Format("%s", longer.c_str());
    EXPECT_EQ(text, longer.c_str()) << length;
  }
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
  for (at = list.GetTailPosition(); at;) backwards.push_back(list.GetPrev(at));
  EXPECT_EQ(forwards, (std::vector<void*>{n + 2, n + 3, n + 4}));
  EXPECT_EQ(backwards, (std::vector<void*>{n + 4, n + 3, n + 2}));
}

}  // namespace
}  // namespace exifkeep::test

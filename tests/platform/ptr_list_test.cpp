// CPtrList against std::list, walked both ways after every change.
#include <afxcoll.h>
#include <gtest/gtest.h>

#include <list>
#include <random>

namespace exifkeep::test {
namespace {

std::list<void*> forwards(const CPtrList& list) {
  std::list<void*> values;
  for (POSITION at = list.GetHeadPosition(); at != nullptr;) values.push_back(list.GetNext(at));
  return values;
}

std::list<void*> backwards(const CPtrList& list) {
  std::list<void*> values;
  for (POSITION at = list.GetTailPosition(); at != nullptr;) values.push_front(list.GetPrev(at));
  return values;
}

TEST(PtrList, AgreesWithAModelUnderRandomUse) {
  std::mt19937 random(5);
  CPtrList list;
  std::list<void*> model;
  for (std::size_t i = 1; i <= 3000; ++i) {
    void* value = reinterpret_cast<void*>(i);
    // Long stretches of growing and of shrinking, down to the empty list.
    const unsigned kind = i % 500 < 200 ? random() % 2 : 2 + random() % 3;
    if (kind == 0) list.AddHead(value), model.push_front(value);
    if (kind == 1) list.AddTail(value), model.push_back(value);
    if (kind == 2) {
      EXPECT_EQ(list.RemoveHead(), model.empty() ? nullptr : model.front());
      if (!model.empty()) model.pop_front();
    } else if (kind == 3) {
      EXPECT_EQ(list.RemoveTail(), model.empty() ? nullptr : model.back());
      if (!model.empty()) model.pop_back();
    } else if (kind == 4 && model.size() > 2) {
      POSITION second = list.GetHeadPosition();
      list.GetNext(second);
      list.RemoveAt(second);
      model.erase(std::next(model.begin()));
    }
    ASSERT_EQ(list.GetCount(), static_cast<int>(model.size()));
    ASSERT_TRUE(forwards(list) == model && backwards(list) == model) << "after step " << i;
  }
  list.RemoveAll();
  EXPECT_TRUE(forwards(list).empty() && backwards(list).empty());
}

}  // namespace
}  // namespace exifkeep::test

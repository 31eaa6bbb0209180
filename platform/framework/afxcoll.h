// The framework's list of pointers. The pointers' targets belong to whoever put them in. Nodes come
// in blocks, so that a list of some dozen entries costs a few allocations; adding may throw
// std::bad_alloc and then leaves the list as it was.
#pragma once

#include <afx.h>

struct AfxListNode;
struct AfxListBlock;

// A place in a list; null is behind either end. Stays valid until its entry is removed.
using POSITION = AfxListNode*;

class CPtrList : public CObject {
 public:
  CPtrList() = default;
  ~CPtrList() override;

  int GetCount() const { return count_; }
  BOOL IsEmpty() const { return count_ == 0; }

  // Null for an empty list.
  void* GetHead() const;
  void* GetTail() const;
  void* RemoveHead();
  void* RemoveTail();

  POSITION AddHead(void* value);
  POSITION AddTail(void* value);
  void RemoveAll();

  POSITION GetHeadPosition() const { return head_; }
  POSITION GetTailPosition() const { return tail_; }

  // REQUIRES: position is a place of this list. GetNext and GetPrev move it on.
  void* GetNext(POSITION& position) const;
  void* GetPrev(POSITION& position) const;
  void* GetAt(POSITION position) const;
  void RemoveAt(POSITION position);

 private:
  AfxListNode* takeNode(void* value);

  AfxListNode* head_ = nullptr;
  AfxListNode* tail_ = nullptr;
  AfxListNode* free_ = nullptr;
  AfxListBlock* blocks_ = nullptr;
  int count_ = 0;
};

/// @file
/// The framework's list of pointers. The pointers' targets belong to whoever put them in. Nodes
/// come in blocks, so that a list of some dozen entries costs a few allocations; adding may throw
/// std::bad_alloc and then leaves the list as it was.
#pragma once

#include <afx.h>

/// @cond
struct AfxListNode;
struct AfxListBlock;
/// @endcond

/// A place in a list; null is behind either end. Stays valid until its entry is removed.
using POSITION = AfxListNode*;

/// A list of pointers. To walk it:
///
///     for (POSITION place = list.GetHeadPosition(); place != nullptr;)
///       use(list.GetNext(place));
class EXIFKEEP_PLATFORM_API CPtrList : public CObject {
 public:
  /// Empty.
  CPtrList() = default;
  /// What the elements point to is not destroyed.
  ~CPtrList() override;

  /// The number of elements.
  int GetCount() const { return count_; }
  /// Whether there are none.
  BOOL IsEmpty() const { return count_ == 0; }

  /// @{
  /// The first (last) element, which the Remove functions take out; null for an empty list.
  void* GetHead() const;
  void* GetTail() const;
  void* RemoveHead();
  void* RemoveTail();
  /// @}

  /// @{
  /// Adds an element at this end and returns its place.
  POSITION AddHead(void* value);
  POSITION AddTail(void* value);
  /// @}

  /// Empties the list. What the elements point to is not destroyed.
  void RemoveAll();

  /// @{
  /// The place of the first (last) element; null for an empty list.
  POSITION GetHeadPosition() const { return head_; }
  POSITION GetTailPosition() const { return tail_; }
  /// @}

  /// @{
  /// The element at a place of this list, which GetNext and GetPrev then move to the next
  /// (previous) one. RemoveAt takes the element out. REQUIRES: position is a place of this list,
  /// not null.
  void* GetNext(POSITION& position) const;
  void* GetPrev(POSITION& position) const;
  void* GetAt(POSITION position) const;
  void RemoveAt(POSITION position);
  /// @}

 private:
  AfxListNode* takeNode();

  AfxListNode* head_ = nullptr;
  AfxListNode* tail_ = nullptr;
  AfxListNode* free_ = nullptr;  // removed ones
  AfxListBlock* blocks_ = nullptr;
  int untouched_ = 0;  // nodes at the end of the newest block that were never used
  int count_ = 0;
};

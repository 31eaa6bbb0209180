/// @file
/// The framework's list of pointers. The pointers' targets belong to whoever put them in. Nodes
/// come in blocks, so that a list of some dozen entries costs a few allocations; adding may throw
/// std::bad_alloc and then leaves the list as it was.
#pragma once

#include <afx.h>

#include <cstddef>

/// @cond
struct AfxListNode;
struct AfxListBlock;
/// @endcond

/// A place in a list; null is behind either end. Stays valid until its entry is removed.
using POSITION = AfxListNode*;

/// A list of pointers. To walk it:
///
///     for (void* element : list) use(element);
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

  /// A place that knows its list, for algorithms and range-based for.
  class Iterator {
   public:
    /// @cond
    using value_type = void*;
    using difference_type = ptrdiff_t;
    Iterator() = default;
    Iterator(const CPtrList* list, POSITION place) : list_(list), place_(place) {}
    void* operator*() const { return list_->GetAt(place_); }
    Iterator& operator++() {
      list_->GetNext(place_);
      return *this;
    }
    Iterator operator++(int) {
      const Iterator before = *this;
      ++*this;
      return before;
    }
    bool operator==(const Iterator&) const = default;

   private:
    const CPtrList* list_ = nullptr;
    POSITION place_ = nullptr;
    /// @endcond
  };

  /// @{
  /// From the first element to behind the last one.
  Iterator begin() const { return {this, head_}; }
  Iterator end() const { return {this, nullptr}; }
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

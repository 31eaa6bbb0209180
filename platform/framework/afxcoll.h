// SPDX-License-Identifier: MIT
/// @file
/// The framework's list of pointers. It does not own what the pointers point to. Nodes are
/// allocated in blocks. Adding may throw std::bad_alloc and then leaves the list unchanged.
#pragma once

#include <afx.h>

#include <cstddef>

/// @cond
struct AfxListNode;
struct AfxListBlock;
/// @endcond

/// A position in a list, or null beyond either end. Valid until its element is removed.
using POSITION = AfxListNode*;

/// A list of pointers. To iterate over it:
///
///     for (void* element : list) use(element);
class EXIFKEEP_PLATFORM_API CPtrList : public CObject {
 public:
  /// Empty.
  CPtrList() = default;
  /// Does not destroy what the elements point to.
  ~CPtrList() override;

  /// The number of elements.
  int GetCount() const { return count_; }
  /// Whether there are no elements.
  BOOL IsEmpty() const { return count_ == 0; }

  /// @{
  /// The first or last element, or null if the list is empty. The Remove functions also remove it.
  void* GetHead() const;
  void* GetTail() const;
  void* RemoveHead();
  void* RemoveTail();
  /// @}

  /// @{
  /// Adds an element at the head or tail and returns its position.
  POSITION AddHead(void* value);
  POSITION AddTail(void* value);
  /// @}

  /// Removes all elements. Does not destroy what they point to.
  void RemoveAll();

  /// @{
  /// The position of the first or last element, or null if the list is empty.
  POSITION GetHeadPosition() const { return head_; }
  POSITION GetTailPosition() const { return tail_; }
  /// @}

  /// @{
  /// The element at a position. GetNext and GetPrev then move the position to the next or previous
  /// one. RemoveAt removes the element. REQUIRES: a position in this list, not null.
  void* GetNext(POSITION& position) const;
  void* GetPrev(POSITION& position) const;
  void* GetAt(POSITION position) const;
  void RemoveAt(POSITION position);
  /// @}

  /// For algorithms and range-based for.
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
  /// The range of all elements.
  Iterator begin() const { return {this, head_}; }
  Iterator end() const { return {this, nullptr}; }
  /// @}

 private:
  AfxListNode* takeNode();

  AfxListNode* head_ = nullptr;
  AfxListNode* tail_ = nullptr;
  AfxListNode* free_ = nullptr;  // removed nodes
  AfxListBlock* blocks_ = nullptr;
  int untouched_ = 0;  // nodes of the newest block that have not been used yet
  int count_ = 0;
};

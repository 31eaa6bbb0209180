// SPDX-License-Identifier: MIT
/// @file
/// The framework's list of pointers. It does not own what the pointers point to. Nodes are
/// allocated in blocks. Adding may throw std::bad_alloc and then leaves the list unchanged.
#pragma once

#include <afx.h>

#include <cstddef>
#include <utility>

/// @cond
struct AfxListNode {
  AfxListNode* next;
  AfxListNode* previous;
  void* value;
};
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
  void* GetHead() const { return GetAt(head_); }
  void* GetTail() const { return GetAt(tail_); }
  void* RemoveHead();
  void* RemoveTail();
  /// @}

  /// @{
  /// Adds an element at the head or tail and returns its position.
  POSITION AddHead(void* value) {
    AfxListNode* node = takeNode();
    *node = {head_, nullptr, value};
    (head_ ? head_->previous : tail_) = node;
    return head_ = node;
  }
  POSITION AddTail(void* value) {
    AfxListNode* node = takeNode();
    *node = {nullptr, tail_, value};
    (tail_ ? tail_->next : head_) = node;
    return tail_ = node;
  }
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
  void* GetNext(POSITION& position) const {
    void* value = position->value;
    position = position->next;
    return value;
  }
  void* GetPrev(POSITION& position) const {
    void* value = position->value;
    position = position->previous;
    return value;
  }
  void* GetAt(POSITION position) const { return position ? position->value : nullptr; }
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
  // Returns a node whose fields the caller has to set. If it throws, the list is unchanged.
  AfxListNode* takeNode() {
    if (!free_ && fresh_ == freshEnd_) addBlock();
    ++count_;
    return free_ ? std::exchange(free_, free_->next) : fresh_++;
  }
  void addBlock();

  AfxListNode* head_ = nullptr;
  AfxListNode* tail_ = nullptr;
  AfxListNode* free_ = nullptr;  // removed nodes
  AfxListBlock* blocks_ = nullptr;
  AfxListNode* fresh_ = nullptr;  // nodes of the newest block that have not been used yet
  AfxListNode* freshEnd_ = nullptr;
  int count_ = 0;
};

// SPDX-License-Identifier: MIT
// A doubly linked list whose nodes are allocated in blocks. Removed nodes are reused; an empty list
// has no memory.
#include <afxcoll.h>

#include <iterator>

struct AfxListBlock {
  static constexpr int capacity = 40;
  AfxListBlock* next;
  AfxListNode nodes[capacity];

  // User-defined, so that creating a block does not clear its nodes.
  explicit AfxListBlock(AfxListBlock* rest) : next(rest) {}
};

CPtrList::~CPtrList() {
  RemoveAll();
}

void CPtrList::RemoveAll() {
  while (blocks_) {
    AfxListBlock* rest = blocks_->next;
    delete blocks_;
    blocks_ = rest;
  }
  head_ = tail_ = free_ = fresh_ = freshEnd_ = nullptr;
  count_ = 0;
}

void CPtrList::addBlock() {
  blocks_ = new AfxListBlock(blocks_);
  fresh_ = std::begin(blocks_->nodes);
  freshEnd_ = std::end(blocks_->nodes);
}

void CPtrList::RemoveAt(POSITION position) {
  if (!position) return;
  if (count_ == 1) return RemoveAll();
  (position->previous ? position->previous->next : head_) = position->next;
  (position->next ? position->next->previous : tail_) = position->previous;
  position->next = free_;
  free_ = position;
  --count_;
}

void* CPtrList::RemoveHead() {
  void* value = GetHead();
  RemoveAt(head_);
  return value;
}

void* CPtrList::RemoveTail() {
  void* value = GetTail();
  RemoveAt(tail_);
  return value;
}

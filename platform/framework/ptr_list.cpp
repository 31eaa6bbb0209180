// SPDX-License-Identifier: MIT
// A doubly linked list whose nodes are allocated in blocks. Removed nodes are reused; an empty list
// has no memory.
#include <afxcoll.h>

struct AfxListNode {
  AfxListNode* next;
  AfxListNode* previous;
  void* value;
};

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
  head_ = tail_ = free_ = nullptr;
  count_ = untouched_ = 0;
}

// Returns a node whose fields the caller has to set. If it throws, the list is unchanged.
AfxListNode* CPtrList::takeNode() {
  AfxListNode* node = free_;
  if (node) {
    free_ = node->next;
  } else {
    if (untouched_ == 0) {
      blocks_ = new AfxListBlock(blocks_);
      untouched_ = AfxListBlock::capacity;
    }
    node = &blocks_->nodes[AfxListBlock::capacity - untouched_--];
  }
  ++count_;
  return node;
}

POSITION CPtrList::AddHead(void* value) {
  AfxListNode* node = takeNode();
  *node = {head_, nullptr, value};
  (head_ ? head_->previous : tail_) = node;
  head_ = node;
  return node;
}

POSITION CPtrList::AddTail(void* value) {
  AfxListNode* node = takeNode();
  *node = {nullptr, tail_, value};
  (tail_ ? tail_->next : head_) = node;
  tail_ = node;
  return node;
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

void* CPtrList::GetHead() const {
  return GetAt(head_);
}
void* CPtrList::GetTail() const {
  return GetAt(tail_);
}

void* CPtrList::GetAt(POSITION position) const {
  return position ? position->value : nullptr;
}

void* CPtrList::GetNext(POSITION& position) const {
  void* value = position->value;
  position = position->next;
  return value;
}

void* CPtrList::GetPrev(POSITION& position) const {
  void* value = position->value;
  position = position->previous;
  return value;
}

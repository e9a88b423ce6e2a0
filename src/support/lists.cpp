#include "support/lists.h"

#include <memory>

zDblList::~zDblList() {
  // A handler may delete the owner of the very list that is being walked.
  for (zDListIter* walk = walks; walk != nullptr; walk = walk->nextWalk) {
    walk->current = nullptr;
    walk->list = nullptr;
  }
  while (next != this) {
    unlinkAndFree(next);
  }
}

void* zDblList::popFront() {
  zDListNode* node = next;
  while (node != this && node->deleted) {
    node = node->next;
  }
  return pop(node);
}

void* zDblList::popBack() {
  zDListNode* node = prev;
  while (node != this && node->deleted) {
    node = node->prev;
  }
  return pop(node);
}

bool zDblList::remove(const void* item) {
  return pop(find(item)) != nullptr;
}

bool zDblList::replace(const void* item, void* replacement) {
  zDListNode* node = find(item);
  if (node == this) {
    return false;
  }
  node->payload = replacement;
  return true;
}

zDListNode* zDblList::find(const void* item) {
  zDListNode* node = next;
  while (node != this && (node->deleted || node->payload != item)) {
    node = node->next;
  }
  return node;
}

bool zDblList::isEmpty() const {
  for (const zDListNode* node = next; node != this; node = node->next) {
    if (!node->deleted) {
      return false;
    }
  }
  return true;
}

void zDblList::insertAfter(zDListNode* where, void* item) {
  auto* node = new zDListNode;
  node->payload = item;
  node->prev = where;
  node->next = where->next;
  where->next->prev = node;
  where->next = node;
}

void zDblList::unlinkAndFree(zDListNode* node) {
  node->prev->next = node->next;
  node->next->prev = node->prev;
  delete node;
}

void* zDblList::pop(zDListNode* node) {
  if (node == this) {
    return nullptr;
  }
  void* item = node->payload;
  // Out of every walk at once; the memory stays until the last iterator on it has moved on.
  if (node->iterators == 0) {
    unlinkAndFree(node);
  } else {
    node->deleted = true;
  }
  return item;
}

zDListIter::zDListIter(zDblList& walked) : list(&walked), nextWalk(walked.walks) {
  walked.walks = this;
}

zDListIter::~zDListIter() {
  reset();
  if (list == nullptr) {
    return;
  }
  zDListIter** link = &list->walks;
  while (*link != this) {
    link = &(*link)->nextWalk;
  }
  *link = nextWalk;
}

void* zDListIter::next() {
  if (list == nullptr) {
    return nullptr;
  }
  zDListNode* const sentinel = list;
  if (current == nullptr) {
    current = sentinel;
    ++current->iterators;
  }
  do {
    zDListNode* const left = current;
    current = left->next;
    ++current->iterators;
    leave(left, sentinel);
  } while (current != sentinel && current->deleted);
  if (current == sentinel) {
    --current->iterators;
    current = nullptr;
    return nullptr;
  }
  return current->payload;
}

void zDListIter::removeCurrent() {
  if (current != nullptr && list != nullptr && current != static_cast<zDListNode*>(list)) {
    current->deleted = true;
  }
}

void zDListIter::reset() {
  if (current != nullptr && list != nullptr) {
    leave(current, list);
  }
  current = nullptr;
}

void zDListIter::leave(zDListNode* node, const zDListNode* sentinel) {
  --node->iterators;
  if (node != sentinel && node->deleted && node->iterators == 0) {
    zDblList::unlinkAndFree(node);
  }
}

zPlist::~zPlist() {
  while (!isEmpty()) {
    takeFirst();
  }
}

void zPlist::addFirst(void* item) {
  auto link = std::make_unique<zPlink>(item);
  link->next = next;
  next = link.release();
}

void* zPlist::takeFirst() {
  if (next == nullptr) {
    return nullptr;
  }
  const std::unique_ptr<zPlink> link(static_cast<zPlink*>(next));
  next = link->next;
  return link->payload;
}

#include "support/singly_list.h"

#include <memory>

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

// Memory of messages: copies of texts and string lists, each with one place of making and one of
// release. Running out of memory is an answer here, never an exception.

#include "link/tool_message.h"

#include <cstring>
#include <memory>
#include <new>

char* copyText(std::string_view text) {
  char* const copy = new (std::nothrow) char[text.size() + 1]();
  if (copy != nullptr && !text.empty()) {
    std::memcpy(copy, text.data(), text.size());
  }
  return copy;
}

StringListNode* makeStringListNode(std::string_view text) {
  std::unique_ptr<StringListNode> node(new (std::nothrow) StringListNode);
  if (node != nullptr) {
    node->length = static_cast<std::int32_t>(text.size());
    node->text = copyText(text);
  }
  return node != nullptr && node->text != nullptr ? node.release() : nullptr;
}

void freeStringList(StringListNode* head) {
  while (head != nullptr) {
    StringListNode* const next = head->next;
    delete[] head->text;
    delete head;
    head = next;
  }
}

StringList::~StringList() {
  freeStringList(first);
}

void StringList::append(std::string_view text) {
  StringListNode* const node = makeStringListNode(text);
  if (node == nullptr) {
    return;
  }
  (last != nullptr ? last->next : first) = node;
  last = node;
}

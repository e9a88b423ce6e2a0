#include "prompts/prompt_items.h"

#include "link/tool_message.h"

PromptItems promptItems(const StringListNode* head) {
  PromptItems items;
  for (const StringListNode* node = head; node != nullptr; node = node->next) {
    items.emplace_back(node->text);
  }
  return items;
}

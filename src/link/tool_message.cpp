// The one table of messages, the names of tools, and the memory of messages.
//
// A wrong letter, a sixth parameter or a row out of order does not compile. Copies of texts and
// string lists have one place of making and one of release each. Running out of memory is an answer
// here, never an exception.

#include "link/tool_message.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "link/message_numbers.h"

namespace {

// Not constexpr on purpose: reaching it while the table is built is a compile error.
void badMessageRow() {}

consteval MessageRow row(int tag, MessageDirection direction, std::string_view name,
                         std::string_view shape) {
  if (shape.size() > static_cast<std::size_t>(kMaxParameters)) {
    badMessageRow();
  }
  for (const char letter : shape) {
    if (letter != kStringParameter && letter != kIntegerParameter && letter != kListParameter) {
      badMessageRow();
    }
  }
  return {tag, direction, name, shape};
}

consteval MessageRow sent(int tag, std::string_view name, std::string_view shape) {
  return row(tag, MessageDirection::kSentByUi, name, shape);
}

consteval MessageRow received(int tag, std::string_view name, std::string_view shape) {
  return row(tag, MessageDirection::kReceivedByUi, name, shape);
}

constexpr std::array kTable = {
    sent(MSG_UI_OK, "MSG_UI_OK", ""),
    sent(MSG_UI_NOT_OK, "MSG_UI_NOT_OK", ""),
    sent(MSG_UI_COMMAND, "MSG_UI_COMMAND", "S"),
    sent(MSG_UI_CANCEL, "MSG_UI_CANCEL", ""),
    sent(MSG_UI_STRING, "MSG_UI_STRING", "S"),
    sent(MSG_UI_VALUE, "MSG_UI_VALUE", "S"),
    sent(MSG_UI_LIST_CHOICE, "MSG_UI_LIST_CHOICE", "S"),
    sent(MSG_UI_EXIT, "MSG_UI_EXIT", ""),
    sent(MSG_UI_FILE, "MSG_UI_FILE", "S"),
    sent(MSG_UI_BITS, "MSG_UI_BITS", "L"),
    sent(MSG_UI_DIRECTORY, "MSG_UI_DIRECTORY", "S"),
    sent(MSG_UI_ACK, "MSG_UI_ACK", ""),
    sent(MSG_UI_FIND, "MSG_UI_FIND", ""),
    sent(MSG_UI_SIGNAL_PARAM, "MSG_UI_SIGNAL_PARAM", "S"),
    sent(MSG_CONNECT, "MSG_CONNECT", ""),
    sent(MSG_DISCONNECT, "MSG_DISCONNECT", ""),
    sent(MSG_SHUTDOWN_ACK, "MSG_SHUTDOWN_ACK", ""),
    sent(MSG_TOOL_READY, "MSG_TOOL_READY", ""),
    sent(MSG_HELP_REQUEST, "MSG_HELP_REQUEST", "S"),
    sent(MSG_SHOW_ORGANIZER, "MSG_SHOW_ORGANIZER", ""),

    received(MSG_T_TEXT, "MSG_T_TEXT", "S"),
    received(MSG_T_QUESTION, "MSG_T_QUESTION", "SS"),
    received(MSG_T_PROMPT, "MSG_T_PROMPT", "S"),
    received(MSG_T_ASK_STRING, "MSG_T_ASK_STRING", "SS"),
    received(MSG_T_ASK_INTEGER, "MSG_T_ASK_INTEGER", "SS"),
    received(MSG_T_ASK_LIST, "MSG_T_ASK_LIST", "SSIL"),
    received(MSG_T_EXIT_CONFIRM, "MSG_T_EXIT_CONFIRM", ""),
    received(MSG_T_EXIT, "MSG_T_EXIT", ""),
    received(MSG_T_TITLE, "MSG_T_TITLE", "S"),
    received(MSG_T_ASK_FILE, "MSG_T_ASK_FILE", "SSSS"),
    received(MSG_T_ASK_BITS, "MSG_T_ASK_BITS", "SSL"),
    received(MSG_T_ASK_DIRECTORY, "MSG_T_ASK_DIRECTORY", "SS"),
    received(MSG_T_SYSTEM_OPENED, "MSG_T_SYSTEM_OPENED", "SS"),
    received(MSG_T_ERROR_BOX, "MSG_T_ERROR_BOX", "SS"),
    received(MSG_T_BUSY, "MSG_T_BUSY", ""),
    received(MSG_T_IDLE, "MSG_T_IDLE", ""),
    received(MSG_T_WARNING_BOX, "MSG_T_WARNING_BOX", "SS"),
    received(MSG_T_FIND, "MSG_T_FIND", "IIL"),
    received(MSG_T_ASK_SIGNAL_PARAM, "MSG_T_ASK_SIGNAL_PARAM", "SSIL"),
    received(MSG_T_ASK_RANGE, "MSG_T_ASK_RANGE", "SSII"),
    received(MSG_CONNECT_OK, "MSG_CONNECT_OK", "IIIIS"),
    received(MSG_CONNECT_DENIED, "MSG_CONNECT_DENIED", "IIII"),
    received(MSG_TOOL_LEFT, "MSG_TOOL_LEFT", "IIS"),
    received(MSG_TOOL_STARTED, "MSG_TOOL_STARTED", ""),
    received(MSG_TOOL_READY, "MSG_TOOL_READY", ""),
    received(MSG_START_POLL_TIMER, "MSG_START_POLL_TIMER", ""),
    received(MSG_TOOL_ACTIVE, "MSG_TOOL_ACTIVE", ""),
    received(MSG_LINK_IDENT, "MSG_LINK_IDENT", "S"),
    received(MSG_LINK_WARNING_BOX, "MSG_LINK_WARNING_BOX", "SS"),
    received(MSG_SHUTDOWN, "MSG_SHUTDOWN", "IIII"),
    received(MSG_SHUTDOWN_NOW, "MSG_SHUTDOWN_NOW", ""),
};

constexpr bool comesBefore(const MessageRow& left, const MessageRow& right) {
  return left.direction != right.direction ? left.direction < right.direction
                                           : left.tag < right.tag;
}

static_assert(std::adjacent_find(kTable.begin(), kTable.end(),
                                 [](const MessageRow& left, const MessageRow& right) {
                                   return !comesBefore(left, right);
                                 }) == kTable.end(),
              "rows ascend by direction and tag, none twice");

}  // namespace

std::span<const MessageRow> messageTable() {
  return kTable;
}

const MessageRow* findMessage(int tag, MessageDirection direction) {
  const MessageRow wanted{tag, direction, {}, {}};
  const auto* const found = std::lower_bound(kTable.begin(), kTable.end(), wanted, comesBefore);
  return found != kTable.end() && !comesBefore(wanted, *found) ? &*found : nullptr;
}

const char* toolTypeName(int toolType) {
  switch (toolType) {
    case NELKV:
      return "NELKV";
    case NELKVUI:
      return "NELKVUI";
    case NELGATE:
      return "NELGATE";
    case NELMPM:
      return "NELMPM";
    case NELLINK:
      return "NELLINK";
    case EXTERNAL:
      return "EXTERNAL";
    default:
      return nullptr;
  }
}

bool mayConnectAs(int toolType) {
  return toolType != NELMPM && toolTypeName(toolType) != nullptr;
}

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

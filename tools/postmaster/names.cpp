#include "postmaster/names.h"

#include "link/message_numbers.h"

namespace postmaster {

std::string toolName(int toolType) {
  const char* known = toolTypeName(toolType);
  return known != nullptr ? known : "tool type " + std::to_string(toolType);
}

const MessageRow* rowOf(const FrameHeader& header) {
  const bool byUi = header.sender == NELKVUI;
  const MessageRow* row =
      findMessage(header.tag, byUi ? MessageDirection::kSentByUi : MessageDirection::kReceivedByUi);
  if (row == nullptr) {
    row = findMessage(header.tag,
                      byUi ? MessageDirection::kReceivedByUi : MessageDirection::kSentByUi);
  }
  return row;
}

std::string messageLabel(const FrameHeader& header) {
  const MessageRow* row = rowOf(header);
  const std::string name = row != nullptr ? std::string(row->name) : "unknown";
  return name + "(" + std::to_string(header.tag) + ")";
}

}  // namespace postmaster

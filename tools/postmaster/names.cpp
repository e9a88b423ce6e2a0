#include "postmaster/names.h"

#include "link/message_numbers.h"

namespace postmaster {

std::string toolName(int toolType) {
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
      return "tool type " + std::to_string(toolType);
  }
}

bool mayConnect(int toolType) {
  switch (toolType) {
    case NELKV:
    case NELKVUI:
    case NELGATE:
    case NELLINK:
    case EXTERNAL:
      return true;
    default:
      return false;
  }
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

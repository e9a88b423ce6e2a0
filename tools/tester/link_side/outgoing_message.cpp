#include "tester/link_side/outgoing_message.h"

namespace tester {

OutgoingRecord::OutgoingRecord(const OutgoingMessage& message) {
  int index = 0;
  for (const OutgoingParameter& parameter : message.parameters) {
    std::visit([&](const auto& value) { set(index, value); }, parameter);
    ++index;
  }
}

void OutgoingRecord::set(int index, const std::vector<std::string>& items) {
  for (const std::string& item : items) {
    list.append(item);
  }
  record.setList(index, list.head());
}

}  // namespace tester

#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "link/tool_message.h"

namespace tester {

using OutgoingParameter = std::variant<std::string, std::int32_t, std::vector<std::string>>;

/// One message to the user interface, with the parameters of its row in the message table.
struct OutgoingMessage {
  int tag = 0;
  std::vector<OutgoingParameter> parameters = {};
};

/// The parameters of a message in the form that the link sends.
class OutgoingRecord {
 public:
  /// `message` has at most kMaxParameters parameters and must outlive the record, which refers to
  /// its texts.
  explicit OutgoingRecord(const OutgoingMessage& message);

  const ToolMessage& words() const { return record; }

 private:
  void set(int index, const std::string& text) { record.setText(index, text.c_str()); }
  void set(int index, std::int32_t number) { record.setNumber(index, number); }
  void set(int index, const std::vector<std::string>& items);

  ToolMessage record;
  StringList list;  ///< of the message's list parameter; no message has two
};

}  // namespace tester

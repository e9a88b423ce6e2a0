#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frames/message.h"
#include "link/message_numbers.h"

/// One parameter of a message.
struct Parameter : frames::Value {
  using List = std::vector<std::string>;
  using frames::Value::variant;

  std::string payload() const;
};

/// A message as it crossed the wire.
struct Message {
  int kind = kFrameDirected;
  int tag = 0;
  int sender = 0;
  int dest = 0;
  std::vector<Parameter> parameters{};

  /// Of the first parameter; empty when that is no text.
  std::string text() const {
    const auto* first = parameters.empty() ? nullptr : std::get_if<std::string>(&parameters[0]);
    return first != nullptr ? *first : "";
  }
};

/// 2000 MSG_T_TEXT "text", for logs and failures.
std::string describe(const Message& message);

/// Wire form of a message, with its NUL. The parameters must be those of the message table;
/// otherwise an exception says what is wrong.
std::string toWire(const Message& message);

/// Takes a wire form (without its NUL) apart; an exception says what is wrong with it.
Message fromWire(const std::string& frame);

// Payloads and frames as they stand on the wire, right or wrong.

/// A number; a counted text; a frame with its NUL.
std::string wireWord(std::int32_t value);
std::string wireString(std::string_view text);
std::string wireText(const FrameHeader& header, std::string_view payload = {});

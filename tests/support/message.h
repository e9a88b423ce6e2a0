#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "link/message_numbers.h"
#include "link/tool_message.h"
#include "link/wire.h"

/// One parameter of a message, from a number, a text or a list of texts.
struct Parameter {
  using List = std::vector<std::string>;

  Parameter(int value) : kind('I'), number(value) {}
  Parameter(std::string text) : kind('S'), texts{std::move(text)} {}
  Parameter(std::string_view text) : Parameter(std::string(text)) {}
  Parameter(const char* text) : Parameter(std::string(text)) {}
  Parameter(List list) : kind('L'), texts(std::move(list)) {}

  /// 7, "text" or ["one", "two"], with C escapes.
  std::string describe() const;
  std::string payload() const;

  bool operator==(const Parameter&) const = default;

  char kind;       ///< I, S or L
  int number = 0;  ///< of a number
  List texts;      ///< of a text, that one
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
    return parameters.empty() || parameters[0].texts.empty() ? "" : parameters[0].texts[0];
  }
};

/// 2000 MSG_T_TEXT "text", for logs and failures.
std::string describe(const Message& message);

/// Wire form of a message, with its NUL. The parameters must be those of its row in `preferred`
/// direction or, if there is none, in the other one; otherwise an exception says what is wrong.
std::string toWire(const Message& message, MessageDirection preferred);

/// Takes a wire form (with or without its NUL) apart; an exception says what is wrong with it.
Message fromWire(std::string_view frame, MessageDirection preferred);

// Payloads and frames as they stand on the wire, right or wrong.

/// A number; a counted text; a frame with its NUL.
std::string wireWord(std::int32_t value);
std::string wireString(std::string_view text);
std::string wireText(const FrameHeader& header, std::string_view payload = {});

#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "link/message_numbers.h"
#include "link/tool_message.h"
#include "link/wire.h"

/// One parameter of a message, from a number, a text or a list of texts.
class Parameter {
 public:
  using List = std::vector<std::string>;

  Parameter(int number) : value(number) {}
  Parameter(std::string text) : value(std::move(text)) {}
  Parameter(std::string_view text) : value(std::string(text)) {}
  Parameter(const char* text) : value(std::string(text)) {}
  Parameter(List list) : value(std::move(list)) {}

  /// Empty or 0 when the parameter is of another kind.
  std::string text() const { return get<std::string>(); }
  int number() const { return get<int>(); }
  List list() const { return get<List>(); }
  /// I, S or L.
  char kind() const { return "ISL"[value.index()]; }
  /// 7, "text" or ["one", "two"], with C escapes.
  std::string describe() const;
  std::string payload() const;

  bool operator==(const Parameter&) const = default;

 private:
  template <class T>
  T get() const {
    const T* const held = std::get_if<T>(&value);
    return held != nullptr ? *held : T();
  }

  std::variant<int, std::string, List> value;
};

/// A message as it crossed the wire.
struct Message {
  int kind = kFrameDirected;
  int tag = 0;
  int sender = 0;
  int dest = 0;
  std::vector<Parameter> parameters{};
  std::string fault{};  ///< why the payload could not be decoded; empty when it could

  /// Parameter number `index`; an empty text when there is none.
  Parameter parameter(std::size_t index) const {
    return index < parameters.size() ? parameters[index] : Parameter("");
  }
  std::string text(std::size_t index = 0) const { return parameter(index).text(); }
  int number(std::size_t index = 0) const { return parameter(index).number(); }
  Parameter::List list(std::size_t index = 0) const { return parameter(index).list(); }
};

/// 2000 MSG_T_TEXT "text", for logs and failures.
std::string describe(const Message& message);
std::ostream& operator<<(std::ostream& out, const Message& message);

/// Wire form of a message, with its NUL. The parameters must be those of its row in `preferred`
/// direction or, if there is none, in the other one; otherwise an exception says what is wrong.
std::string toWire(const Message& message, MessageDirection preferred);

/// Takes a wire form (with or without its NUL) apart, likewise.
Message fromWire(std::string_view frame, MessageDirection preferred);

// Payloads and frames as they stand on the wire, right or wrong.

/// A number; a counted text; a frame with its NUL.
std::string wireWord(std::int32_t value);
std::string wireString(std::string_view text);
std::string wireText(const FrameHeader& header, std::string_view payload = {});

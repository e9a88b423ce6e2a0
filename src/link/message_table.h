#pragma once

#include <span>
#include <string_view>

/// One row a message and direction: the only place that says which parameters a message has. The
/// encoder, the decoder, the release of decoded data and the Postmaster's trace all walk it.

/// Which side of the user interface a row belongs to. A number may stand in both (9001).
enum class MessageDirection { kSentByUi, kReceivedByUi };

/// Letters of a row's shape.
enum ParameterLetter : char {
  kStringParameter = 'S',
  kIntegerParameter = 'I',
  kListParameter = 'L',
};

/// A message has no more parameters than a decoded message has words.
inline constexpr int kMaxParameters = 5;

struct MessageRow {
  int tag;
  MessageDirection direction;
  std::string_view name;
  std::string_view shape;  ///< one letter a parameter: S string, I integer, L string list
};

/// All rows, those sent by the user interface first, ascending by tag within a direction.
std::span<const MessageRow> messageTable();

/// The row of `tag` in `direction`; null for an unknown one.
const MessageRow* findMessage(int tag, MessageDirection direction);

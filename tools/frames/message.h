#pragma once

#include "link/tool_message.h"
#include "link/wire.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace frames {

/// One message as it travels, shared by all who are to get it. `header.length` always equals the
/// payload's size.
struct Envelope {
  FrameHeader header;
  std::string payload;
  std::string text;  ///< wire form, with its NUL
};
using Message = std::shared_ptr<const Envelope>;

/// A message, or the reason why a text is none.
struct ParsedText {
  Message message;
  std::string_view fault;  ///< empty with a message
};

/// Reads one frame from its wire form, given with the final NUL. Any bytes are safe.
ParsedText parseText(std::string text);

/// A directed message between these tool types, with the parameters that the message table gives
/// `tag`. Without parameters when they do not fit a frame.
Message makeMessage(int sender, int dest, int tag, const ToolMessage& parameters = {});

/// One parameter: an integer, a string or a string list. Texts as they came, NULs and all.
using Value = std::variant<std::int32_t, std::string, std::vector<std::string>>;

/// What the payload of a message holds of the parameters that the message table promises.
struct Parameters {
  std::vector<Value> values;
  bool isComplete = true;     ///< whether all of them are there
  bool endsInPart = false;    ///< whether the last value is a part of its list
  std::size_t bytesLeft = 0;  ///< of the payload, behind the last one

  /// Whether the payload is what a receiver takes.
  bool areGood() const { return isComplete && bytesLeft == 0; }
  /// String number `index`; empty when there is none.
  std::string text(std::size_t index) const;
};
Parameters parametersOf(const Envelope& message);

/// Whether the message reaches the user interface once it is passed on.
bool goesToUi(const FrameHeader& header);

/// Name of a tool type as the system writes it, such as "NELKV"; "tool type 6" for an unknown one.
std::string toolName(int toolType);

/// The row of the message table for a frame between these tools; null for an unknown number. What
/// the user interface sends has the row of that direction, everything else the other, so far as
/// the number has both.
const MessageRow* rowOf(const FrameHeader& header);

/// Name of the message, such as "MSG_UI_COMMAND"; "unknown" for a number not in the table.
std::string_view messageName(const FrameHeader& header);

/// Name and number, such as "MSG_UI_COMMAND(1002)".
std::string messageLabel(const FrameHeader& header);

}  // namespace frames

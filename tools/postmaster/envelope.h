#pragma once

#include "link/tool_message.h"
#include "link/wire.h"

#include <optional>
#include <string>
#include <string_view>

namespace postmaster {

/// One message as it travels. `header.length` always equals the payload's size.
struct Envelope {
  FrameHeader header;
  std::string payload;
  std::string text;  ///< wire form, with its NUL
};

/// An envelope, or the reason why a text is none.
struct ParsedText {
  std::optional<Envelope> envelope;
  std::string_view fault;  ///< empty with an envelope
};

/// Reads one frame from its wire form, given without the final NUL. Any bytes are safe.
ParsedText parseText(std::string_view text);

/// A directed message of the Postmaster to the tool type `dest`, with the parameters that the
/// message table gives `tag`.
Envelope ownMessage(int tag, int dest, const ToolMessage& parameters = {});

}  // namespace postmaster

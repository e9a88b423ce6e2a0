#pragma once

#include "link/tool_message.h"
#include "link/wire.h"

#include <memory>
#include <string>
#include <string_view>

namespace postmaster {

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

/// A directed message of the Postmaster to the tool type `dest`, with the parameters that the
/// message table gives `tag`.
Message ownMessage(int tag, int dest, const ToolMessage& parameters = {});

/// The message that differs from `original` by its payload; null when it would be too long for a
/// frame.
Message withPayload(const Envelope& original, std::string payload);

/// Cuts a byte stream into frames at their NULs. Holds at most one unfinished frame of
/// kMaxFrameText bytes besides what was appended last: the rest of a longer one is thrown away up
/// to its NUL, with which the stream is in step again.
class FrameSplitter {
 public:
  enum class Item {
    kNone,       ///< no whole frame is there
    kFrame,      ///< one frame was taken
    kOversized,  ///< the bound was passed; told once a frame
  };

  /// Takes the next bytes of the stream. Call `next` until it gives kNone after each.
  void append(std::string_view bytes);

  /// Takes the next frame, with its NUL, into `text`.
  Item next(std::string& text);

  /// Whether the stream stands inside a frame.
  bool isMidFrame() const { return discarding || buffer.bytesStored() > 0; }

 private:
  FrameBuffer buffer;
  bool discarding = false;
};

/// Name of a tool type as the system writes it, such as "NELKV"; "tool type 6" for an unknown one.
std::string toolName(int toolType);

/// The row of the message table for a frame between these tools; null for an unknown number. What
/// the user interface sends has the row of that direction, everything else the other, so far as
/// the number has both.
const MessageRow* rowOf(const FrameHeader& header);

/// Name and number, such as "MSG_UI_COMMAND(1002)"; "unknown(77)" for a number not in the table.
std::string messageLabel(const FrameHeader& header);

}  // namespace postmaster

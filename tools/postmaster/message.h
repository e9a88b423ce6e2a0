#pragma once

#include "frames/message.h"

#include <string>
#include <string_view>

namespace postmaster {

using frames::Envelope;
using frames::Message;
using frames::messageLabel;
using frames::ParsedText;
using frames::parseText;
using frames::toolName;

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

}  // namespace postmaster

#pragma once

#include "link/message_table.h"
#include "link/wire.h"

#include <string>

namespace postmaster {

/// Name of a tool type as the system writes it, such as "NELKV"; "tool type 6" for an unknown one.
std::string toolName(int toolType);

/// The row of the message table for a frame between these tools; null for an unknown number. What
/// the user interface sends has the row of that direction, everything else the other, so far as
/// the number has both.
const MessageRow* rowOf(const FrameHeader& header);

/// Name and number, such as "MSG_UI_COMMAND(1002)"; "unknown(77)" for a number not in the table.
std::string messageLabel(const FrameHeader& header);

}  // namespace postmaster

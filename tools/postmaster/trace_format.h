#pragma once

#include "postmaster/envelope.h"

#include <chrono>
#include <string>
#include <string_view>

namespace postmaster {

/// One line, without its line feed, that tells all of a frame: sender, receiver ("*" for an
/// undirected one), name and number, and the parameters. Text stands in double quotes, with
/// everything that is no printable ASCII escaped; long text and long lists are cut, with their
/// full size behind. A payload that does not hold what the message promises is shown as far as
/// it goes. For example: NELKVUI -> NELKV MSG_UI_COMMAND(1002) "go"
std::string describeMessage(const Envelope& message);

/// Local time with milliseconds: "2024-03-01 12:34:56.789".
std::string formatTime(std::chrono::system_clock::time_point time);

/// `text` in double quotes, escaped and cut as in a trace line.
std::string quoteText(std::string_view text);

}  // namespace postmaster

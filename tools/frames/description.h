#pragma once

#include "frames/message.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace frames {

/// How texts and lists are shown.
enum class Style {
  kCut,   ///< long ones cut, what is no printable ASCII escaped
  kFull,  ///< the same, to their end
  kRaw,   ///< to their end, and only line feeds, quotes and backslashes escaped; a NUL is a blank
};

/// One line, without its line feed, that tells all of a frame: sender, receiver ("*" for an
/// undirected one), name and number, and the parameters. Text stands in double quotes, with
/// everything that is no printable ASCII escaped; long text and long lists are cut, with their
/// full size behind. A payload that does not hold what the message promises is shown as far as
/// it goes. For example: NELKVUI -> NELKV MSG_UI_COMMAND(1002) "go"
std::string describeMessage(const Envelope& message, Style style = Style::kCut);

/// Local time with milliseconds: "2024-03-01 12:34:56.789".
std::string formatTime(std::chrono::system_clock::time_point time);

/// The time that formatTime has written; nothing for another text.
std::optional<std::chrono::system_clock::time_point> parseTime(std::string_view text);

/// A parameter as it stands in such a line: text in double quotes, lists in brackets.
std::string describeValue(const Value& value, Style style = Style::kCut);

}  // namespace frames

#include "dump/dump.h"

#include "frames/description.h"
#include "link/message_numbers.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace dump {

namespace {

constexpr std::string_view kTimeForm = "2024-03-01 12:34:56.789";
constexpr std::string_view kArrow = " -> ";
constexpr std::string_view kUnknownTool = "tool type ";

std::optional<frames::WallTime> timeOfTraceLine(std::string_view line) {
  const bool isDivided = line.size() > kTimeForm.size() && line[kTimeForm.size()] == ' ';
  return isDivided ? frames::parseTime(line.substr(0, kTimeForm.size())) : std::nullopt;
}

/// Takes a tool's name and the blank behind it off the front of `text`. The name of an unknown type
/// holds blanks itself.
std::string takeTool(std::string_view& text) {
  const std::size_t skipped = text.starts_with(kUnknownTool) ? kUnknownTool.size() : 0;
  const std::size_t end = std::min(text.find(' ', skipped), text.size());
  std::string name(text.substr(0, end));
  text.remove_prefix(std::min(end + 1, text.size()));
  return name;
}

/// The number in "MSG_UI_COMMAND(1002)", which `text` begins with.
std::optional<int> tagOf(std::string_view text) {
  const std::size_t open = text.find('(');
  if (open == std::string_view::npos || text.substr(0, open).find(' ') != std::string_view::npos) {
    return std::nullopt;
  }
  int tag = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data() + open + 1, end, tag);
  return error == std::errc() && stop != end && *stop == ')' ? std::optional(tag) : std::nullopt;
}

Sighting sightingOf(const frames::RecordedFrame& frame) {
  const FrameHeader& header = frame.message->header;
  const bool isDirected = header.kind == kFrameDirected;
  return {frame.time, header.tag, frames::toolName(header.sender),
          isDirected ? frames::toolName(header.dest) : "*"};
}

}  // namespace

std::optional<Sighting> parseTraceLine(std::string_view line, frames::WallTime start) {
  const auto time = timeOfTraceLine(line);
  if (!time) {
    return std::nullopt;
  }
  line.remove_prefix(kTimeForm.size() + 1);
  const std::size_t arrow = line.find(kArrow);
  if (arrow == std::string_view::npos) {
    return std::nullopt;
  }
  std::string sender(line.substr(0, arrow));
  line.remove_prefix(arrow + kArrow.size());
  std::string receiver = takeTool(line);
  const std::optional<int> tag = tagOf(line);
  if (!tag) {
    return std::nullopt;
  }
  const auto since = std::chrono::round<std::chrono::milliseconds>(*time - start);
  return Sighting{since, *tag, std::move(sender), std::move(receiver)};
}

std::string Dump::take(std::string_view bytes, std::string& faults) {
  std::string shown;
  frames::Line line;
  lines.append(bytes);
  while (isReadable() && lines.next(line)) {
    shown += show(line, faults);
  }
  // What is endless must not be read to its end.
  if (kind == Kind::kUnknown && lines.isInOverlong()) {
    lines.rest(line);
    showFirst(line, faults);
  }
  return shown;
}

std::string Dump::finish(std::string& faults) {
  frames::Line line;
  std::string shown = isReadable() && lines.rest(line) ? show(line, faults) : "";
  if (kind == Kind::kUnknown) {
    kind = Kind::kUnreadable;
    faults += options.file + ": it is empty\n";
  }
  return shown;
}

std::string Dump::show(const frames::Line& line, std::string& faults) {
  switch (kind) {
    case Kind::kUnknown:
      return showFirst(line, faults);
    case Kind::kRecording:
      return showRecorded(line, faults);
    case Kind::kTrace:
      return showTraced(line, faults);
    case Kind::kUnreadable:
      break;
  }
  return {};
}

std::string Dump::showFirst(const frames::Line& line, std::string& faults) {
  const frames::ParsedHead head = frames::parseRecordingHead(line.text);
  if (head.fault.empty()) {
    kind = Kind::kRecording;
    start = head.start;
    return {};
  }
  const auto time = timeOfTraceLine(line.text);
  if (time && parseTraceLine(line.text, *time)) {
    kind = Kind::kTrace;
    start = *time;
    return showTraced(line, faults);
  }
  kind = Kind::kUnreadable;
  faults += options.file + ": " +
            (head.isRecording ? head.fault : "it is neither a recording nor a trace") + "\n";
  return {};
}

std::string Dump::showRecorded(const frames::Line& line, std::string& faults) const {
  const frames::ParsedRecord record = frames::parseRecordingLine(line.text);
  if (!record.frame) {
    faults += where(line) + "damaged: " + std::string(record.fault) + "\n";
    return {};
  }
  if (!isWanted(sightingOf(*record.frame))) {
    return {};
  }
  const frames::Style style = options.showFull ? frames::Style::kFull : frames::Style::kCut;
  return timeText(record.frame->time) + " " +
         frames::describeMessage(*record.frame->message, style) + "\n";
}

std::string Dump::showTraced(const frames::Line& line, std::string& faults) const {
  const std::optional<Sighting> sighting = parseTraceLine(line.text, start);
  if (!sighting || line.isCut) {
    faults += where(line) + "damaged: no line of a trace\n";
    return {};
  }
  return isWanted(*sighting) ? line.text + "\n" : "";
}

/// What is undirected has all tools for receivers.
bool Dump::isWanted(const Sighting& sighting) const {
  const bool isInTime = sighting.time >= options.from && sighting.time <= options.to;
  const bool isOfTag = options.tags.empty() || options.tags.contains(sighting.tag);
  const bool isOfTool = options.tools.empty() || options.tools.contains(sighting.sender) ||
                        options.tools.contains(sighting.receiver) || sighting.receiver == "*";
  return isInTime && isOfTag && isOfTool;
}

std::string Dump::where(const frames::Line& line) const {
  return options.file + ":" + std::to_string(line.number) + ": ";
}

std::string Dump::timeText(std::chrono::milliseconds time) const {
  if (options.showDates) {
    return frames::formatTime(start + time);
  }
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%5lld.%03d", static_cast<long long>(time.count() / 1000),
                static_cast<int>(time.count() % 1000));
  return text.data();
}

}  // namespace dump

// The format of recordings. A line is what `recordingLine` writes, to the byte, or it is damaged.
#include "frames/recording.h"

#include "frames/description.h"

#include <charconv>

namespace frames {

namespace {

constexpr std::string_view kWord = "korvane-recording ";
constexpr std::string_view kVersion = "1";

/// Some thirty years, so that no sum of times overflows.
constexpr std::size_t kMaxDigits = 12;

std::optional<std::chrono::milliseconds> parseMilliseconds(std::string_view digits) {
  long long count = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, count);
  const bool isCanonical = digits.size() == 1 || !digits.starts_with('0');
  if (error != std::errc() || stop != end || count < 0 || digits.size() > kMaxDigits ||
      !isCanonical || digits.starts_with('-')) {
    return std::nullopt;
  }
  return std::chrono::milliseconds(count);
}

}  // namespace

std::string recordingHead(WallTime start) {
  return std::string(kWord) + std::string(kVersion) + " " + formatTime(start) + "\n";
}

std::string recordingLine(const RecordedFrame& frame) {
  const std::string& wire = frame.message->text;
  return std::to_string(frame.time.count()) + " " + wire.substr(0, wire.size() - 1) + "\n";
}

ParsedHead parseRecordingHead(std::string_view line) {
  if (!line.starts_with(kWord)) {
    return {false, {}, "it is no recording"};
  }
  line.remove_prefix(kWord.size());
  const std::size_t blank = line.find(' ');
  if (line.substr(0, blank) != kVersion) {
    return {true, {}, "it is a recording of another format than " + std::string(kVersion)};
  }
  const auto start =
      blank == std::string_view::npos ? std::nullopt : parseTime(line.substr(blank + 1));
  if (!start) {
    return {true, {}, "its first line holds no date and time"};
  }
  return {true, *start, {}};
}

ParsedRecord parseRecordingLine(std::string_view line) {
  const std::size_t blank = line.find(' ');
  const auto time = parseMilliseconds(line.substr(0, blank));
  if (!time || blank == std::string_view::npos) {
    return {std::nullopt, "it does not begin with a time in milliseconds"};
  }
  ParsedText parsed = parseText(std::string(line.substr(blank + 1)) + '\0');
  if (parsed.message == nullptr) {
    return {std::nullopt, parsed.fault};
  }
  if (parsed.message->text.size() > kMaxFrameText) {
    return {std::nullopt, "longer than a frame"};
  }
  return {RecordedFrame{*time, std::move(parsed.message)}, {}};
}

}  // namespace frames

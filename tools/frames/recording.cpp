// The format of recordings. A line is what `recordingLine` writes, to the byte, or it is damaged.
#include "frames/recording.h"

#include "frames/description.h"
#include "frames/lines.h"
#include "support/descriptor.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>

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

class Loader {
 public:
  explicit Loader(bool isForHead) : endsWithHead(isForHead) {}

  /// False once the rest of the file does not matter, as that of one that cannot be read.
  bool take(std::string_view bytes) {
    Line line;
    lines.append(bytes);
    while (isGood() && lines.next(line)) {
      takeLine(line);
    }
    // What is endless must not be read to its end.
    if (isGood() && !hasHead && lines.isInOverlong() && lines.rest(line)) {
      takeLine(line);
    }
    return isGood() && !(hasHead && endsWithHead);
  }

  LoadedRecording finish() {
    Line line;
    if (isGood() && lines.rest(line)) {
      takeLine(line);
    }
    if (isGood() && !hasHead) {
      loaded.fault = "it is empty";
    }
    if (damagedLines > 0) {
      loaded.damage = std::to_string(damagedLines) +
                      (damagedLines == 1 ? " damaged line" : " damaged lines") +
                      " left out, the first is line " + firstDamage;
    }
    return std::move(loaded);
  }

 private:
  bool isGood() const { return loaded.fault.empty(); }

  void takeLine(const Line& line) {
    if (!hasHead) {
      loaded.fault = parseRecordingHead(line.text).fault;
      hasHead = true;
      return;
    }
    ParsedRecord record = parseRecordingLine(line.text);
    if (record.frame) {
      loaded.frames.push_back(std::move(*record.frame));
    } else if (damagedLines++ == 0) {
      firstDamage = std::to_string(line.number) + ": " + std::string(record.fault);
    }
  }

  bool endsWithHead;
  LineSplitter lines;
  LoadedRecording loaded;
  bool hasHead = false;
  std::size_t damagedLines = 0;
  std::string firstDamage;
};

LoadedRecording load(const std::string& fileName, bool isForHead) {
  constexpr std::size_t kReadBytes = std::size_t{64} * 1024;
  const UniqueFile file(std::fopen(fileName.c_str(), "re"));
  std::array<char, kReadBytes> bytes;
  Loader loader(isForHead);
  std::size_t count = 1;
  while (file && count > 0) {
    count = std::fread(bytes.data(), 1, bytes.size(), file.get());
    if (!loader.take({bytes.data(), count})) {
      return loader.finish();
    }
  }
  if (!file || std::ferror(file.get()) != 0) {
    return {{}, std::strerror(errno), {}};
  }
  return loader.finish();
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

LoadedRecording loadRecording(const std::string& fileName) {
  return load(fileName, false);
}

std::string recordingFault(const std::string& fileName) {
  return load(fileName, true).fault;
}

}  // namespace frames

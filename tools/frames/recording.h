#pragma once

#include "frames/message.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace frames {

/// A recording is a text file: a head line, then a line for each frame. docs/recording.md says what
/// they hold.

using WallTime = std::chrono::system_clock::time_point;

/// A frame and when it was seen, from the start of the recording.
struct RecordedFrame {
  std::chrono::milliseconds time{};
  Message message;
};

/// The head of a recording that starts at `start`, with its line end.
std::string recordingHead(WallTime start);

/// The line of a frame, with its line end.
std::string recordingLine(const RecordedFrame& frame);

/// What the first line of a file, without its line end, says.
struct ParsedHead {
  bool isRecording = false;  ///< of whatever version
  WallTime start{};
  std::string fault;  ///< why the recording cannot be read; empty when it can
};
ParsedHead parseRecordingHead(std::string_view line);

/// A frame, or why a line, without its line end, holds none. Any bytes are safe.
struct ParsedRecord {
  std::optional<RecordedFrame> frame;
  std::string_view fault;  ///< empty with a frame
};
ParsedRecord parseRecordingLine(std::string_view line);

/// All of a recording. Damaged lines are left out.
struct LoadedRecording {
  std::vector<RecordedFrame> frames;
  std::string fault;   ///< why the file cannot be read as a recording; empty when it can
  std::string damage;  ///< what of it was left out and why, for people; empty for nothing
};
LoadedRecording loadRecording(const std::string& fileName);

/// That `fault` alone, by the beginning of the file.
std::string recordingFault(const std::string& fileName);

}  // namespace frames

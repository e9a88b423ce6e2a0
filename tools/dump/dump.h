#pragma once

#include "dump/options.h"
#include "frames/lines.h"
#include "frames/recording.h"

#include <optional>
#include <string>
#include <string_view>

namespace dump {

/// What is filtered by: a frame of a recording or a line of a trace.
struct Sighting {
  std::chrono::milliseconds time{};  ///< since the start
  int tag = 0;
  std::string sender;
  std::string receiver;  ///< "*" for an undirected frame
};

/// Turns the bytes of a recording, or of a trace, into the lines to show. The first line says what
/// the file is.
class Dump {
 public:
  explicit Dump(Options asked) : options(std::move(asked)) {}

  /// Takes the next bytes; the lines to show for them, and in `faults` a line for each damaged one,
  /// "FILE:NUMBER: " and what is wrong.
  std::string take(std::string_view bytes, std::string& faults);

  /// The same for a last line without a line end.
  std::string finish(std::string& faults);

  /// False once it is clear that the file is none that can be read.
  bool isReadable() const { return kind != Kind::kUnreadable; }

 private:
  enum class Kind { kUnknown, kRecording, kTrace, kUnreadable };

  std::string show(const frames::Line& line, std::string& faults);
  std::string showFirst(const frames::Line& line, std::string& faults);
  std::string showRecorded(const frames::Line& line, std::string& faults) const;
  std::string showTraced(const frames::Line& line, std::string& faults) const;
  bool isWanted(const Sighting& sighting) const;
  std::string where(const frames::Line& line) const;
  std::string timeText(std::chrono::milliseconds time) const;

  Options options;
  Kind kind = Kind::kUnknown;
  frames::WallTime start;
  frames::LineSplitter lines;
};

/// A line of a trace, `start` being the time of its first one; nothing for another text.
std::optional<Sighting> parseTraceLine(std::string_view line, frames::WallTime start);

}  // namespace dump

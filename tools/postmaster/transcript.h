#pragma once

#include "postmaster/witness.h"

#include <string>
#include <string_view>

namespace postmaster {

/// What the user saw and typed, as lines with a time and a mark:
///
///   2024-03-01 12:34:56.789 > go
///
/// | text of the tester, a line of the log; + goes on with the line of the log that another line of
/// the transcript broke up; > a command of the user; ? a question of the tester; = its answer; ! a
/// box that tells of something; # what the transcript itself has to say.
///
/// Bytes stay as they came, but for NULs, which the window takes for blanks. Texts of questions,
/// answers and boxes stand in quotes, with their line feeds, quotes and backslashes escaped.
class Transcript {
 public:
  /// What to append for a frame that came at `time`; `refusal`, when not empty, is why it went no
  /// further.
  std::string sawAt(std::string_view time, const Envelope& message, std::string_view refusal);

  /// What to append for a remark of the transcript's own.
  std::string remark(std::string_view time, std::string_view text);

  /// Whether text of the log has come that does not end in a line feed.
  bool isWithinLine() const { return logLineOpen; }

 private:
  std::string logText(std::string_view time, std::string_view text);
  std::string line(std::string_view time, char mark, std::string_view text);

  bool logLineOpen = false;   ///< the next text goes on with a line of the log
  bool fileLineOpen = false;  ///< and its beginning ends the transcript
};

/// The transcript as a file, which goes on with what earlier runs have written.
class TranscriptLog : public Witness {
 public:
  explicit TranscriptLog(Complaints& complaints) : file("transcript", complaints) {}
  ~TranscriptLog() override;

  std::string open(const std::string& fileName);
  void saw(const Message& message, std::string_view refusal) override;

 private:
  GrowingFile file;
  Transcript transcript;
  bool isOpen = false;
};

}  // namespace postmaster

// A file in two pieces, cut where its first byte says, read as a recording. A line that holds a
// frame is the line that is written for it, and is described whatever it holds.

#include <algorithm>

#include "frames/description.h"
#include "frames/lines.h"
#include "frames/recording.h"
#include "tests/fuzz/fuzz_target.h"

namespace {

void read(const frames::Line& line) {
  require(line.text.size() <= frames::LineSplitter::kMaxLine);
  const frames::ParsedHead head = frames::parseRecordingHead(line.text);
  require(head.isRecording || !head.fault.empty());
  const frames::ParsedRecord record = frames::parseRecordingLine(line.text);
  require(record.frame.has_value() == record.fault.empty());
  if (record.frame) {
    require(frames::recordingLine(*record.frame) == line.text + '\n');
    frames::describeMessage(*record.frame->message, frames::Style::kFull);
  }
}

}  // namespace

void fuzz(std::span<const std::uint8_t> data) {
  const std::string_view bytes(reinterpret_cast<const char*>(data.data()), data.size());
  const std::size_t cut = data.empty() ? 0 : std::min<std::size_t>(data[0], data.size());
  frames::LineSplitter lines;
  frames::Line line;
  for (const std::string_view piece : {bytes.substr(0, cut), bytes.substr(cut)}) {
    lines.append(piece);
    while (lines.next(line)) {
      read(line);
    }
  }
  if (lines.rest(line)) {
    read(line);
  }
}

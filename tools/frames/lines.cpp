#include "frames/lines.h"

#include <algorithm>
#include <utility>

namespace frames {

void LineSplitter::append(std::string_view bytes) {
  pending.erase(0, std::exchange(at, 0));
  pending += bytes;
}

bool LineSplitter::next(Line& line) {
  const std::size_t end = pending.find('\n', at);
  const std::size_t length = std::min(end, pending.size()) - at;
  collect(std::string_view(pending).substr(at, length));
  at += length;
  if (end == std::string::npos) {
    return false;
  }
  ++at;
  take(line);
  return true;
}

bool LineSplitter::rest(Line& line) {
  if (current.text.empty()) {
    return false;
  }
  take(line);
  return true;
}

void LineSplitter::collect(std::string_view piece) {
  const std::size_t room = kMaxLine - current.text.size();
  current.isCut = current.isCut || piece.size() > room;
  current.text += piece.substr(0, room);
}

void LineSplitter::take(Line& line) {
  ++current.number;
  line = std::exchange(current, {{}, current.number, false});
}

}  // namespace frames

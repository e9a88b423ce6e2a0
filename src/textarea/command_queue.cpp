#include "textarea/command_queue.h"

#include <algorithm>
#include <utility>

#include "link/tool_interface.h"
#include "link/wire.h"
#include "support/text.h"
#include "textarea/text_pane.h"

namespace {

bool hasOpenQuote(std::string_view text) {
  return std::count(text.begin(), text.end(), '"') % 2 != 0;
}

void sendFirstPiece() {
  const std::string piece = std::move(commandQueue.front());
  commandQueue.pop_front();
  sendCommand(piece.c_str());
}

}  // namespace

std::deque<std::string> splitCommandLine(std::string_view line) {
  std::deque<std::string> pieces;
  std::string piece;
  bool inQuotes = false;
  for (const char c : line) {
    if (c == ';' && !inQuotes) {
      pieces.push_back(std::exchange(piece, {}));
      continue;
    }
    if (c == '"') {
      inQuotes = !inQuotes;
    }
    piece += c;
  }
  if (!piece.empty()) {
    pieces.push_back(std::move(piece));
  }
  return pieces;
}

std::string joinCommandLines(std::string_view text, std::string_view before) {
  bool startsInQuotes = hasOpenQuote(before);
  std::size_t lineStart = 0;
  return joinLines(text, [&](std::string& joined) {
    const std::string_view line = std::string_view(joined).substr(lineStart);
    if (hasOpenQuote(line) != startsInQuotes) {
      joined += '"';
    }
    joined += ';';
    lineStart = joined.size();
    startsInQuotes = false;
  });
}

bool executeCommandLine(std::string_view line) {
  std::deque<std::string> pieces = splitCommandLine(line.empty() ? kEmptyLineCommand : line);
  for (const std::string& piece : pieces) {
    if (piece.size() > kMaxSentText) {
      const std::string notice = "< Command of " + std::to_string(piece.size()) +
                                 " bytes is too long to be sent (at most " +
                                 std::to_string(kMaxSentText) + ") >\n";
      theTextPane->appendText(notice.c_str());
      return false;
    }
  }
  commandQueue = std::move(pieces);
  sendFirstPiece();
  return true;
}

void releaseCommandQueue() {
  if (!outputSinceCommand) {
    return;
  }
  while (!commandQueue.empty()) {
    sendFirstPiece();
  }
  outputSinceCommand = false;
}

#include "textarea/command_queue.h"

#include <utility>

#include "link/typed_senders.h"

std::deque<std::string> commandQueue;
bool outputSinceCommand = false;

namespace {

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

void executeCommandLine(std::string_view line) {
  commandQueue = splitCommandLine(line.empty() ? kEmptyLineCommand : line);
  sendFirstPiece();
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

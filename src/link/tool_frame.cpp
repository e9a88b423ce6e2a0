// Splitting a received frame for ToolReceive.

#include <algorithm>
#include <array>
#include <cstdio>

#include "link/tool_interface.h"
#include "link/wire.h"

namespace {

// Intended: 4 less than the header has, so a header without its last word draws no text.
constexpr int kShortFrameBytes = 16;

}  // namespace

int ToolFrameDecode(const char* text, int textLength, int* tag, int* sender, void* data,
                    int* length, int* dest) {
  std::array<char, kMaxReceivedFrameBytes> binary;
  const Frame frame = decodeFrame(text, textLength, binary);
  if (frame.binaryBytes < kShortFrameBytes) {
    // Intended: not a rejection, as the text says.
    std::fprintf(stderr,
                 "%s:**ERR:Message received with illegal length information (len=%d). NOT !!! "
                 "Ignored.\n",
                 FormatToolName(g_OwnToolType), frame.binaryBytes);
  }
  *tag = frame.header.tag;
  *sender = frame.header.sender;
  *dest = frame.header.dest;
  *length = frame.header.length;

  std::copy(frame.payload.begin(), frame.payload.end(), static_cast<char*>(data));
  return 1;
}

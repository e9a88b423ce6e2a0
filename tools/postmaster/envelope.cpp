// Messages between wire form and words. Unlike the tools' own reader, which takes any text for a
// frame, the Postmaster is strict: what it forwards is whole, so that one faulty tool cannot upset
// another. A frame is forwarded as the characters that came.
#include "postmaster/envelope.h"

#include "link/message_codec.h"
#include "link/message_numbers.h"

#include <algorithm>
#include <array>
#include <utility>

namespace postmaster {

namespace {

bool isNibble(char c) {
  return c >= '0' && c <= '?';
}

ParsedText faulty(std::string_view fault) {
  return {std::nullopt, fault};
}

}  // namespace

ParsedText parseText(std::string_view text) {
  if (!std::all_of(text.begin(), text.end(), isNibble)) {
    return faulty("characters that belong to no frame");
  }
  if (text.size() % 2 != 0) {
    return faulty("half a byte at its end");
  }
  if (text.size() / 2 < kFrameHeaderBytes) {
    return faulty("shorter than a header");
  }
  std::string binary(text.size() / 2, '\0');
  const Frame frame = decodeFrame(text.data(), static_cast<int>(text.size()), binary);
  if (frame.header.length != frame.binaryBytes - kFrameHeaderBytes) {
    return faulty("its length word does not match");
  }
  if (frame.header.kind != kFrameDirected && frame.header.kind != kFrameUndirected) {
    return faulty("neither directed nor undirected");
  }
  Envelope envelope{frame.header, {frame.payload.begin(), frame.payload.end()}, std::string(text)};
  envelope.text += '\0';
  return {std::move(envelope), {}};
}

Envelope ownMessage(int tag, int dest, const ToolMessage& parameters) {
  std::array<char, kMaxPayloadBytes> payload;
  const int length =
      std::max(0, EncodeMessage(tag, parameters, payload, MessageDirection::kReceivedByUi));
  Envelope envelope{{kFrameDirected, tag, NELMPM, dest, length},
                    {payload.data(), static_cast<std::size_t>(length)},
                    {}};
  envelope.text.resize(kMaxSentFrameText);
  const int used = encodeFrame(envelope.header, payload.data(), envelope.text);
  envelope.text.resize(static_cast<std::size_t>(std::max(used, 0)));
  return envelope;
}

}  // namespace postmaster

// Speed of the link: the nibble code against memcpy of the same number of bytes, the codec of a
// message, and a whole message there and back over a socket pair.

#include <benchmark/benchmark.h>
#include <sys/socket.h>
#include <unistd.h>
#include <array>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "link/wire.h"

namespace {

constexpr int kFrameBytes = 16384;
constexpr int kTextBytes = 2 * kFrameBytes;

std::vector<char> someBytes(std::size_t count) {
  std::vector<char> bytes(count);
  for (std::size_t i = 0; i < count; ++i) {
    bytes[i] = static_cast<char>(i * 7 + i / 256);
  }
  return bytes;
}

// Reference: as many bytes as encoding writes and decoding reads.
void copyFrameText(benchmark::State& state) {
  const std::vector<char> in = someBytes(kTextBytes);
  std::vector<char> out(kTextBytes);
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(in.data());
    std::memcpy(out.data(), in.data(), kTextBytes);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kTextBytes);
}
BENCHMARK(copyFrameText);

void nibbleEncode(benchmark::State& state) {
  const std::vector<char> in = someBytes(kFrameBytes);
  std::vector<char> out(kTextBytes + 1);
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(NibbleEncode(in.data(), out.data(), kFrameBytes));
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kTextBytes);
}
BENCHMARK(nibbleEncode);

void nibbleDecode(benchmark::State& state) {
  const std::vector<char> bytes = someBytes(kFrameBytes);
  std::vector<char> text(kTextBytes + 1);
  NibbleEncode(bytes.data(), text.data(), kFrameBytes);
  std::vector<char> out(kFrameBytes);
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(NibbleDecode(text.data(), out.data(), kTextBytes));
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kTextBytes);
}
BENCHMARK(nibbleDecode);

/// The wire form of a line of text as the tester sends it.
constexpr int kLineBytes = 60;
constexpr int kLineFrameText = 2 * (kFrameHeaderBytes + 2 * kWordBytes + kLineBytes) + 1;

int encodeLine(const std::string& line, std::span<char> text) {
  const int length = EncodeMessage(MSG_T_TEXT, ToolMessage().setText(0, line.c_str()),
                                   g_EncodeBuffer, MessageDirection::kReceivedByUi);
  return encodeFrame({kFrameDirected, MSG_T_TEXT, NELKV, NELKVUI, length}, g_EncodeBuffer.data(),
                     text);
}

// Reference: as many bytes as the frame of a line has.
void copyTextFrame(benchmark::State& state) {
  const std::vector<char> in = someBytes(kLineFrameText);
  std::array<char, kLineFrameText> out{};
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(in.data());
    benchmark::DoNotOptimize(out.data());
    std::memcpy(out.data(), in.data(), out.size());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(copyTextFrame);

void encodeTextFrame(benchmark::State& state) {
  const std::string line(kLineBytes, 'x');
  std::array<char, kLineFrameText> text{};
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(encodeLine(line, text));
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(encodeTextFrame);

void decodeTextFrame(benchmark::State& state) {
  std::array<char, kLineFrameText> text{};
  const int characters = encodeLine(std::string(kLineBytes, 'x'), text);
  std::array<char, kMaxReceivedFrameBytes> payload{};
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(text.data());
    const Frame frame = decodeFrame(text.data(), characters, payload);
    ToolMessage message;
    benchmark::DoNotOptimize(
        DecodeMessage(frame.header.tag, payload.data(), frame.header.length, &message));
    FreeMessage(frame.header.tag, &message);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(decodeTextFrame);

void codeListQuestion(benchmark::State& state) {
  StringList items;
  for (int i = 0; i < static_cast<int>(state.range(0)); ++i) {
    items.append("instance of process " + std::to_string(i));
  }
  const ToolMessage question =
      ToolMessage().setText(0, "Title").setText(1, "Choose").setList(3, items.head());
  for ([[maybe_unused]] auto _ : state) {
    const int length =
        EncodeMessage(MSG_T_ASK_LIST, question, g_EncodeBuffer, MessageDirection::kReceivedByUi);
    ToolMessage decoded;
    benchmark::DoNotOptimize(
        DecodeMessage(MSG_T_ASK_LIST, g_EncodeBuffer.data(), length, &decoded));
    FreeMessage(MSG_T_ASK_LIST, &decoded);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(codeListQuestion)->Arg(10)->Arg(500);

// The tool talks to itself: what it puts in comes out at the other end of the pair and is read by
// a second client.
void messageRoundTrip(benchmark::State& state) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0) {
    state.SkipWithError("no socket pair");
    return;
  }
  g_SocketClient = std::make_unique<SocketControlClient>(ends[0]);
  g_OwnToolType = NELKVUI;
  g_ToolState = LINK_CONNECTED;
  const std::vector<char> payload = someBytes(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    g_ToolSocket = ends[0];
    ToolSend(NELKV, MSG_UI_COMMAND, payload.data(), static_cast<int>(payload.size()));
    g_ToolSocket = ends[1];
    benchmark::DoNotOptimize(ToolReceive(kReceivePoll));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
  g_SocketClient.reset();
  close(ends[0]);
  close(ends[1]);
}
BENCHMARK(messageRoundTrip)->Arg(20)->Arg(16000);

}  // namespace

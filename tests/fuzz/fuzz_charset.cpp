// Any frames of tools pass the conversion to the window's character set and back: nothing leaves
// that is no message. The first byte chooses the tools' set and the number, the rest is payload.

#include <array>
#include <string>

#include "link/message_numbers.h"
#include "postmaster/charset.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  if (data.empty()) {
    return;
  }
  constexpr std::array kSets = {"UTF-8", "ISO-8859-15", "EUC-JP", "UTF-16"};
  const auto charset = postmaster::Charset::open(kSets[data[0] % kSets.size()]);
  const std::string payload(data.begin() + 1, data.end());
  const auto check = [](const postmaster::Message& message) {
    require(message != nullptr && postmaster::parseText(message->text).message != nullptr);
  };
  postmaster::Envelope envelope;
  envelope.payload = payload.substr(0, kMaxPayloadBytes);
  envelope.header = {kFrameDirected, MSG_T_TEXT + data[0] / 4 % 20, NELKV, NELKVUI,
                     static_cast<int>(envelope.payload.size())};
  envelope.text.resize(kMaxFrameText);
  envelope.text.resize(static_cast<std::size_t>(
      encodeFrame(envelope.header, envelope.payload.data(), envelope.text)));
  for (const auto& shown :
       charset->toWindow(std::make_shared<const postmaster::Envelope>(envelope))) {
    check(shown);
    auto answer = *shown;
    answer.header.tag = MSG_UI_STRING;
    answer.header.sender = NELKVUI;
    answer.header.dest = NELKV;
    check(charset->fromWindow(std::make_shared<const postmaster::Envelope>(answer)));
  }
}

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
  const auto passed = [](int sender, int dest, int tag, const std::string& bytes) {
    return postmaster::withPayload(*frames::makeMessage(sender, dest, tag), bytes);
  };
  const auto check = [](const postmaster::Message& message) {
    require(message != nullptr && postmaster::parseText(message->text).message != nullptr);
  };
  const int tag = MSG_T_TEXT + data[0] / 4 % 20;
  for (const auto& shown :
       charset->toWindow(passed(NELKV, NELKVUI, tag, payload.substr(0, kMaxPayloadBytes)))) {
    check(shown);
    check(charset->fromWindow(passed(NELKVUI, NELKV, MSG_UI_STRING, shown->payload)));
  }
}

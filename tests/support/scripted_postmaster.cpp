// One thread. All waiting happens in waitUntil, which polls the listening socket and the connection
// together. Nothing here depends on the tool's staying alive: a dead one shows as a closed
// connection.

#include "tests/support/scripted_postmaster.h"

#include <gtest/gtest.h>

#include <iostream>

namespace {

/// The tool that usually sends a message.
int usualSender(int tag) {
  const auto isWithin = [tag](int first, int last) { return tag >= first && tag <= last; };
  return isWithin(MSG_UI_OK, MSG_UI_SIGNAL_PARAM)           ? NELKVUI
         : isWithin(MSG_T_TEXT, MSG_T_ASK_RANGE)            ? NELKV
         : isWithin(MSG_HELP_REQUEST, MSG_LINK_WARNING_BOX) ? NELLINK
                                                            : NELMPM;
}

}  // namespace

ScriptedPostmaster::~ScriptedPostmaster() {
  if (testing::Test::HasFailure()) {
    std::cout << log << (child != nullptr ? child->report() : "no tool\n") << std::flush;
  }
}

Message ScriptedPostmaster::expectOne(bool isNext, const ScriptTag& tag,
                                      const std::vector<Parameter>& parameters) {
  for (;;) {
    const std::optional<Message> message = next();
    if (message && message->tag == tag.tag &&
        (parameters.empty() || message->parameters == parameters)) {
      return *message;
    }
    if (isNext || !message) {
      failScript("awaited: " + describe({0, tag.tag, 0, 0, parameters}), tag.where);
    }
  }
}

std::vector<Message> ScriptedPostmaster::takeUntil(const ScriptTag& tag) {
  std::vector<Message> messages;
  while (messages.empty() || messages.back().tag != tag.tag) {
    std::optional<Message> message = next();
    if (!message) {
      failScript("awaited: " + describe({0, tag.tag, 0, 0, {}}), tag.where);
    }
    messages.push_back(std::move(*message));
  }
  return messages;
}

void ScriptedPostmaster::expectHangUp(SourceLine where) {
  if (next() || !connection.hasEnded()) {
    failScript("the tool does not hang up", where);
  }
}

std::string ScriptedPostmaster::makeFrame(const ScriptTag& tag, std::vector<Parameter> parameters) {
  const Message message{kFrameDirected, tag.tag, usualSender(tag.tag), toolType,
                        std::move(parameters)};
  log += "> " + describe(message) + "\n";
  return toWire(message);
}

std::optional<Message> ScriptedPostmaster::next() {
  const auto isOver = [&] {
    return connection.hasEnded() || (!hasConnected && !tool().isRunning());
  };
  waitUntil([&] { return connection.hasFrame() || isOver(); });
  const std::optional<std::string> frame = connection.take();
  if (!frame) {
    log += "< nothing\n";
    return std::nullopt;
  }
  Message message = fromWire(*frame);
  toolType = message.sender;
  log += "< " + describe(message) + "\n";
  return message;
}

bool ScriptedPostmaster::waitUntil(const std::function<bool()>& condition, Milliseconds limit) {
  for (const Deadline deadline(limit); !condition();) {
    if (deadline.hasPassed()) {
      return false;
    }
    // Once the tool has hung up the connection would wake every poll.
    ChildProcess::waitABit({{hasConnected ? -1 : rendezvous.listener(), POLLIN, 0},
                            {connection.hasEnded() ? -1 : connection.fd(), POLLIN, 0}});
    if (!hasConnected) {
      connection = Connection(rendezvous.accept());
      hasConnected = connection.isOpen();
    }
    connection.read();
  }
  return true;
}

void ScriptedPostmaster::sendRaw(std::string_view bytes, SourceLine where) {
  const auto isSent = [&] {
    return hasConnected && (connection.send(bytes) != 0 || bytes.empty());
  };
  if (!waitUntil(isSent) || !bytes.empty()) {
    failScript("the tool takes no message", where);
  }
}

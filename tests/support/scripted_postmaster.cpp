// One thread. All waiting happens in waitForNews, which polls the listening socket, the connection
// and the tool's output together, so that a tool never blocks on a full pipe. Nothing here depends
// on the tool's staying alive: a dead one shows as a closed connection.

#include "tests/support/scripted_postmaster.h"

#include <gtest/gtest.h>
#include <linux/sockios.h>
#include <sys/ioctl.h>

#include <cstring>
#include <iostream>
#include <stdexcept>

namespace {

/// The tool that usually sends a message.
int usualSender(int tag) {
  const auto isWithin = [tag](int first, int last) { return tag >= first && tag <= last; };
  return isWithin(MSG_UI_OK, MSG_UI_SIGNAL_PARAM)           ? NELKVUI
         : isWithin(MSG_T_TEXT, MSG_T_ASK_RANGE)            ? NELKV
         : isWithin(MSG_HELP_REQUEST, MSG_LINK_WARNING_BOX) ? NELLINK
                                                            : NELMPM;
}

/// What this side sends is what a user interface receives, unless the tool is another one.
MessageDirection direction(int sender) {
  return sender == NELKVUI ? MessageDirection::kSentByUi : MessageDirection::kReceivedByUi;
}

}  // namespace

ScriptedPostmaster::~ScriptedPostmaster() {
  if (testing::Test::HasFailure()) {
    std::cout << transcript() << std::flush;
  }
}

ChildProcess& ScriptedPostmaster::begin(std::unique_ptr<ChildProcess> started) {
  child = std::move(started);
  connection = {};
  hasConnected = false;
  return *child;
}

ChildProcess& ScriptedPostmaster::tool() {
  if (child == nullptr) {
    throw std::logic_error("no tool was started");
  }
  return *child;
}

int ScriptedPostmaster::exitStatus(Milliseconds limit, SourceLine where) {
  for (const Deadline deadline(limit); tool().isRunning();) {
    if (deadline.hasPassed()) {
      fail("the end of the tool", "it still runs", where);
    }
    waitForNews(deadline.left(limit));
  }
  return tool().exitStatus(limit, where);
}

bool ScriptedPostmaster::hasSocketName() const {
  return std::filesystem::exists(socketName());
}

Message ScriptedPostmaster::expectConnect(SourceLine where) {
  Message message = expectOne(true, {MSG_CONNECT, where}, {});
  toolType = message.sender;
  return message;
}

Message ScriptedPostmaster::expectOne(bool isNext, const ScriptTag& tag,
                                      const std::vector<Parameter>& parameters) {
  const std::string awaited = describe({kFrameDirected, tag.tag, 0, 0, parameters});
  const auto isWrong = [&](const Message& message) {
    return message.tag != tag.tag || !message.fault.empty() ||
           (!parameters.empty() && message.parameters != parameters);
  };
  Message message = nextMessage(awaited, tag.where);
  for (; isWrong(message); message = nextMessage(awaited, tag.where)) {
    if (isNext) {
      fail(awaited, describe(message), tag.where);
    }
  }
  return message;
}

bool ScriptedPostmaster::hasMessage(Milliseconds time) {
  for (const Deadline deadline(time); !connection.hasFrame() && !deadline.hasPassed();) {
    waitForNews(deadline.left(time));
  }
  return connection.hasFrame();
}

void ScriptedPostmaster::expectSilence(Milliseconds time, SourceLine where) {
  if (hasMessage(time)) {
    fail("silence", describe(nextMessage("silence", where)), where);
  }
}

void ScriptedPostmaster::expectHangUp(SourceLine where) {
  for (const Deadline deadline(kAnswerTime);
       !connection.hasEnded() && !deadline.hasPassed() && !connection.hasFrame();) {
    waitForNews(deadline.left(kAnswerTime));
  }
  if (connection.hasFrame() || !connection.hasEnded()) {
    const std::string awaited = "the end of the connection";
    fail(awaited, connection.hasFrame() ? describe(nextMessage(awaited, where)) : "nothing", where);
  }
}

void ScriptedPostmaster::accept(std::string_view identification) {
  send(MSG_CONNECT_OK, 0, 0, 0, 0, identification);
}

void ScriptedPostmaster::deny() {
  send(MSG_CONNECT_DENIED, 0, 0, 0, 0);
}

void ScriptedPostmaster::sendMessage(const ScriptTag& tag, std::vector<Parameter> parameters) {
  sendBytes(makeFrame(tag, std::move(parameters)), tag.where);
}

void ScriptedPostmaster::sendInPieces(std::size_t count, const ScriptTag& tag,
                                      std::vector<Parameter> parameters) {
  const std::string frame = makeFrame(tag, std::move(parameters));
  sendBytes(frame.substr(0, count), tag.where);
  const Deadline deadline(kAnswerTime);
  for (int unread = 1; ::ioctl(connection.fd(), SIOCOUTQ, &unread) != 0 || unread != 0;) {
    if (deadline.hasPassed() || connection.hasEnded()) {
      fail("that the tool reads", "it does not", tag.where);
    }
    waitForNews(Milliseconds{1});  // nothing wakes a poll when the other side reads
  }
  sendBytes(frame.substr(count), tag.where);
}

void ScriptedPostmaster::sendRaw(std::string_view bytes, SourceLine where) {
  note("> " + std::to_string(bytes.size()) + " raw bytes");
  sendBytes(bytes, where);
}

void ScriptedPostmaster::hangUp() {
  note("> hangs up");
  connection.close();
}

std::string ScriptedPostmaster::transcript() {
  return "  conversation:\n" + log + (child != nullptr ? child->report() : "  no tool\n");
}

std::string ScriptedPostmaster::makeFrame(const ScriptTag& tag, std::vector<Parameter> parameters) {
  const Message message{kFrameDirected, tag.tag, usualSender(tag.tag), toolType,
                        std::move(parameters)};
  note("> " + describe(message));
  return toWire(message, direction(toolType != NELKVUI ? NELKVUI : NELKV));
}

Message ScriptedPostmaster::nextMessage(const std::string& awaited, SourceLine where) {
  const Deadline deadline(kAnswerTime);
  std::optional<std::string> frame = connection.take();
  for (; !frame; frame = connection.take()) {
    const bool isOver = connection.hasEnded() || (!hasConnected && !tool().isRunning());
    if (isOver || deadline.hasPassed()) {
      fail(awaited,
           !isOver        ? "nothing"
           : hasConnected ? "the tool closed the connection"
                          : "the tool ended without connecting",
           where);
    }
    waitForNews(deadline.left(kAnswerTime));
  }
  Message message = fromWire(*frame, direction(toolType));
  note("< " + describe(message));
  return message;
}

void ScriptedPostmaster::waitForNews(Milliseconds limit) {
  // Once the tool has hung up the connection would wake every poll.
  tool().waitABit(limit, {{hasConnected ? -1 : rendezvous.listener(), POLLIN, 0},
                          {connection.hasEnded() ? -1 : connection.fd(), POLLIN, 0}});
  if (!hasConnected) {
    connection = Connection(rendezvous.accept());
    hasConnected = connection.isOpen();
  }
  connection.read();
}

void ScriptedPostmaster::sendBytes(std::string_view bytes, SourceLine where) {
  const Deadline deadline(kAnswerTime);
  while (!hasConnected && !deadline.hasPassed()) {
    waitForNews(deadline.left(kAnswerTime));
  }
  int error = connection.send(bytes);
  for (; !bytes.empty(); error = connection.send(bytes)) {
    if (error != 0 || deadline.hasPassed()) {
      fail("that the tool takes a message", std::strerror(error), where);
    }
    waitForNews(Milliseconds{1});
  }
}

void ScriptedPostmaster::fail(const std::string& awaited, const std::string& cameInstead,
                              SourceLine where) {
  failScript("awaited: " + awaited + "\ncame: " + cameInstead + "\n" + transcript(), where);
}

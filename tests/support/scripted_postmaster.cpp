// One thread. All waiting happens in waitForNews, which polls the listening socket, the connection
// and the tool's output together, so that a tool never blocks on a full pipe. Nothing here depends
// on the tool's staying alive: a dead one shows as a closed connection.

#include "tests/support/scripted_postmaster.h"

#include <gtest/gtest.h>
#include <linux/sockios.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <iostream>
#include <stdexcept>
#include <system_error>

#include "tests/support/script_failure.h"

namespace {

constexpr std::size_t kReadChunk = 65536;

/// The tool that usually sends a message.
int usualSender(int tag) {
  struct Range {
    int first;
    int last;
    int sender;
  };
  constexpr std::array<Range, 3> kRanges = {{{MSG_UI_OK, MSG_UI_SIGNAL_PARAM, NELKVUI},
                                             {MSG_T_TEXT, MSG_T_ASK_RANGE, NELKV},
                                             {MSG_HELP_REQUEST, MSG_LINK_WARNING_BOX, NELLINK}}};
  for (const Range& range : kRanges) {
    if (tag >= range.first && tag <= range.last) {
      return range.sender;
    }
  }
  return NELMPM;
}

bool matches(const Message& message, int tag, const std::vector<Parameter>& parameters) {
  return message.tag == tag && message.fault.empty() &&
         (parameters.empty() || message.parameters == parameters);
}

std::string describe(const ScriptTag& tag, const std::vector<Parameter>& parameters) {
  Message message;
  message.tag = tag.tag;
  message.parameters = parameters;
  return ::describe(message);
}

}  // namespace

ScriptedPostmaster::ScriptedPostmaster() = default;

ScriptedPostmaster::~ScriptedPostmaster() {
  if (testing::Test::HasFailure()) {
    std::cout << transcript() << std::flush;
  }
}

void ScriptedPostmaster::start(const Launch& launch) {
  if (child != nullptr) {
    throw std::logic_error("this Postmaster has started its tool");
  }
  note(' ', "starts " + launch.program.string());
  child = std::make_unique<ChildProcess>(launch);
}

ChildProcess& ScriptedPostmaster::tool() {
  if (child == nullptr) {
    throw std::logic_error("no tool was started");
  }
  return *child;
}

int ScriptedPostmaster::exitStatus(Milliseconds limit, SourceLine where) {
  const Deadline deadline(limit);
  while (tool().isRunning()) {
    if (deadline.hasPassed()) {
      fail("the end of the tool", "it still runs", where);
    }
    waitForNews(deadline.left(limit));
  }
  return tool().exitStatus(limit, where);
}

bool ScriptedPostmaster::hasSocketName() const {
  return ::access(socketName().c_str(), F_OK) == 0;
}

Message ScriptedPostmaster::expectConnect(SourceLine where) {
  const std::string awaited = "a connection and " + describe(ScriptTag(MSG_CONNECT), {});
  Message message = nextMessage(awaited, where);
  if (!matches(message, MSG_CONNECT, {})) {
    fail(awaited, ::describe(message), where);
  }
  toolType = message.sender;
  return message;
}

Message ScriptedPostmaster::expectNext(const ScriptTag& tag,
                                       const std::vector<Parameter>& parameters) {
  const std::string awaited = describe(tag, parameters);
  Message message = nextMessage(awaited, tag.where);
  if (!matches(message, tag.tag, parameters)) {
    fail(awaited, ::describe(message), tag.where);
  }
  return message;
}

Message ScriptedPostmaster::expectAmongNext(const ScriptTag& tag,
                                            const std::vector<Parameter>& parameters) {
  const std::string awaited = describe(tag, parameters);
  for (;;) {
    Message message = nextMessage(awaited, tag.where);
    if (matches(message, tag.tag, parameters)) {
      return message;
    }
  }
}

bool ScriptedPostmaster::hasMessage(Milliseconds time) {
  const Deadline deadline(time);
  while (received.find('\0') == std::string::npos && !deadline.hasPassed()) {
    waitForNews(deadline.left(time));
  }
  return received.find('\0') != std::string::npos;
}

void ScriptedPostmaster::expectSilence(Milliseconds time, SourceLine where) {
  if (hasMessage(time)) {
    fail("silence", ::describe(nextMessage("silence", where)), where);
  }
}

void ScriptedPostmaster::expectHangUp(SourceLine where) {
  const Deadline deadline(kAnswerTime);
  while (!hasHungUp && !deadline.hasPassed() && received.find('\0') == std::string::npos) {
    waitForNews(deadline.left(kAnswerTime));
  }
  Message message;
  const bool hasCome = takeMessage(message);
  if (hasCome || !hasHungUp) {
    fail("the end of the connection", hasCome ? ::describe(message) : "nothing", where);
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
  const std::string_view bytes = frame;
  sendBytes(bytes.substr(0, count), tag.where);
  if (count < bytes.size()) {
    awaitRead(tag.where);
    sendBytes(bytes.substr(count), tag.where);
  }
}

void ScriptedPostmaster::sendRaw(std::string_view bytes, SourceLine where) {
  note('>', std::to_string(bytes.size()) + " raw bytes");
  sendBytes(bytes, where);
}

void ScriptedPostmaster::awaitRead(SourceLine where) {
  const Deadline deadline(kAnswerTime);
  for (;;) {
    int unread = 0;
    if (::ioctl(connection.get(), SIOCOUTQ, &unread) != 0) {
      throw std::system_error(errno, std::generic_category(), "SIOCOUTQ");
    }
    if (unread == 0) {
      return;
    }
    if (deadline.hasPassed() || hasHungUp) {
      fail("that the tool reads", "it does not", where);
    }
    // Nothing wakes a poll when the other side reads.
    waitForNews(Milliseconds{1});
  }
}

void ScriptedPostmaster::hangUp() {
  note('>', "hangs up");
  connection.close();
}

std::string ScriptedPostmaster::transcript() {
  std::string text = "  conversation:\n" + log;
  if (!received.empty()) {
    text += "    and " + std::to_string(received.size()) + " bytes not yet taken\n";
  }
  return text + (child != nullptr ? child->report() : "  no tool was started\n");
}

/// What this side sends is what a user interface receives, unless the tool is another one.
MessageDirection ScriptedPostmaster::spoken() const {
  return toolType == NELKVUI ? MessageDirection::kReceivedByUi : MessageDirection::kSentByUi;
}

MessageDirection ScriptedPostmaster::heard() const {
  return toolType == NELKVUI ? MessageDirection::kSentByUi : MessageDirection::kReceivedByUi;
}

std::string ScriptedPostmaster::makeFrame(const ScriptTag& tag, std::vector<Parameter> parameters) {
  const Message message{kFrameDirected, tag.tag, usualSender(tag.tag), toolType,
                        std::move(parameters)};
  note('>', ::describe(message));
  return toWire(message, spoken());
}

bool ScriptedPostmaster::takeMessage(Message& message) {
  const std::size_t end = received.find('\0');
  if (end == std::string::npos) {
    return false;
  }
  message = fromWire(received.substr(0, end), heard());
  received.erase(0, end + 1);
  note('<', ::describe(message));
  return true;
}

Message ScriptedPostmaster::nextMessage(const std::string& awaited, SourceLine where) {
  const Deadline deadline(kAnswerTime);
  Message message;
  while (!takeMessage(message)) {
    if (hasHungUp) {
      fail(awaited, "the tool closed the connection", where);
    }
    if (!hasConnected && child != nullptr && !child->isRunning()) {
      fail(awaited, "the tool ended without connecting", where);
    }
    if (deadline.hasPassed()) {
      fail(awaited, "nothing", where);
    }
    waitForNews(deadline.left(kAnswerTime));
  }
  return message;
}

void ScriptedPostmaster::waitForNews(Milliseconds limit) {
  std::array<pollfd, 2> output = {pollfd{-1, 0, 0}, pollfd{-1, 0, 0}};
  if (child != nullptr) {
    output = child->pollEntries();
  }
  // Once the tool has hung up the connection would wake every poll.
  const int conversation = hasHungUp ? -1 : connection.get();
  std::array<pollfd, 4> entries = {pollfd{hasConnected ? -1 : rendezvous.listener(), POLLIN, 0},
                                   pollfd{conversation, POLLIN, 0}, output[0], output[1]};
  const Milliseconds timeout = std::min(limit, kChildPollTime);
  ::poll(entries.data(), entries.size(), static_cast<int>(timeout.count()));
  if (!hasConnected) {
    acceptConnection();
  }
  readConnection();
  if (child != nullptr) {
    child->drain();
  }
}

void ScriptedPostmaster::acceptConnection() {
  connection = rendezvous.accept();
  hasConnected = connection.isOpen();
}

void ScriptedPostmaster::readConnection() {
  std::array<char, kReadChunk> chunk;
  while (connection.isOpen() && !hasHungUp) {
    const ssize_t count = ::read(connection.get(), chunk.data(), chunk.size());
    if (count > 0) {
      received.append(chunk.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || errno == ECONNRESET) {
      note('<', "hangs up");
      hasHungUp = true;
    } else if (errno != EINTR) {
      return;
    }
  }
}

void ScriptedPostmaster::sendBytes(std::string_view bytes, SourceLine where) {
  const Deadline deadline(kAnswerTime);
  while (!bytes.empty()) {
    const ssize_t count = ::send(connection.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN && !deadline.hasPassed()) {
      waitForNews(Milliseconds{1});
    } else if (errno != EINTR) {
      fail("that the tool takes a message", std::generic_category().message(errno), where);
    }
  }
}

void ScriptedPostmaster::note(char direction, const std::string& text) {
  log += std::string("    ") + direction + " " + text + "\n";
}

void ScriptedPostmaster::fail(const std::string& awaited, const std::string& cameInstead,
                              SourceLine where) {
  failScript("awaited: " + awaited + "\ncame: " + cameInstead + "\n" + transcript(), where);
}

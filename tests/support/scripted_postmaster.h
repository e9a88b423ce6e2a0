#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/connection.h"
#include "tests/support/message.h"
#include "tests/support/rendezvous.h"

/// A message number together with the line of the test that names it.
struct ScriptTag {
  ScriptTag(int number, SourceLine line = SourceLine::current()) : tag(number), where(line) {}

  int tag;
  SourceLine where;
};

/// The Postmaster of a test: it makes the rendezvous files, starts a tool as its child and holds a
/// conversation with it, which reads as such:
///
///   ScriptedPostmaster postmaster;
///   postmaster.start({builtProgram("nelkvui")});
///   postmaster.expectConnect();
///   postmaster.accept();
///   postmaster.expect(MSG_TOOL_READY);
///   postmaster.send(MSG_T_EXIT);
///   postmaster.expect(MSG_DISCONNECT);
///   EXPECT_EQ(postmaster.exitStatus(), 0);
///
/// The conversation is strict: expect() takes the next message, and fails the test and ends it when
/// that is another one or none comes. The failure names what was awaited; the object's end shows
/// all messages and what the tool printed, and kills the tool.
class ScriptedPostmaster {
 public:
  ScriptedPostmaster() = default;
  ScriptedPostmaster(const ScriptedPostmaster&) = delete;
  ScriptedPostmaster& operator=(const ScriptedPostmaster&) = delete;
  ~ScriptedPostmaster();

  /// Starts the tool: a program, or a function that a copy of this process runs. One at a time.
  template <typename What = Launch>
  ChildProcess& start(const What& what) {
    child = std::make_unique<ChildProcess>(what);
    connection = {};
    hasConnected = false;
    return *child;
  }

  // The tool speaks.

  /// The tool connects to the socket and sends 7000.
  Message expectConnect(SourceLine where = SourceLine::current()) {
    return expectOne(true, {MSG_CONNECT, where}, {});
  }

  /// The next message is `tag`; with parameters, exactly these.
  template <typename... Values>
  Message expect(const ScriptTag& tag, Values&&... parameters) {
    return expectOne(true, tag, {Parameter(std::forward<Values>(parameters))...});
  }

  /// Some later message is `tag`; those before it are dropped. For tools that speak unasked.
  template <typename... Values>
  Message expectLater(const ScriptTag& tag, Values&&... parameters) {
    return expectOne(false, tag, {Parameter(std::forward<Values>(parameters))...});
  }

  /// All messages up to the next `tag`, which is the last of them.
  std::vector<Message> takeUntil(const ScriptTag& tag);

  /// Whether a message is there to be taken, or comes within `time`.
  bool hasMessage(Milliseconds time) {
    return waitUntil([&] { return connection.hasFrame(); }, time);
  }

  /// The tool closes the connection without another message.
  void expectHangUp(SourceLine where = SourceLine::current());

  // The Postmaster and the tools behind it speak.

  /// 8000; the text is what the tool stores as an identification.
  void accept(const std::string& identification = "scripted Postmaster") {
    send(MSG_CONNECT_OK, 0, 0, 0, 0, identification);
  }
  /// 8001.
  void deny() { send(MSG_CONNECT_DENIED, 0, 0, 0, 0); }

  /// Sends a message from the tool that usually sends it. The parameters must be those of the
  /// message table: a number for I, a text for S, a Parameter::List for L.
  template <typename... Values>
  void send(const ScriptTag& tag, Values&&... parameters) {
    sendRaw(makeFrame(tag, {Parameter(std::forward<Values>(parameters))...}), tag.where);
  }

  /// Bytes as they stand. A frame needs its NUL.
  void sendRaw(std::string_view bytes, SourceLine where = SourceLine::current());

  /// Closes the connection.
  void hangUp() { connection.close(); }

  // The tool as a process.

  ChildProcess& tool() { return *child; }
  /// Waits for the tool's end: its exit status, or 128 + n after signal n.
  int exitStatus(SourceLine where = SourceLine::current()) { return tool().exitStatus(where); }

  /// Whether the name of the socket is still there; a tool that leaves removes it.
  bool hasSocketName() const { return std::filesystem::exists(rendezvous.socketName()); }

 private:
  /// The next message, or a later one.
  Message expectOne(bool isNext, const ScriptTag& tag, const std::vector<Parameter>& parameters);

  std::string makeFrame(const ScriptTag& tag, std::vector<Parameter> parameters);
  /// The next message; nothing when none comes or can come.
  std::optional<Message> next();
  /// Takes in what the tool sends until `condition` holds; false when it does not within `limit`.
  bool waitUntil(const std::function<bool()>& condition, Milliseconds limit = kAnswerTime);

  Rendezvous rendezvous;
  Connection connection;
  std::unique_ptr<ChildProcess> child;
  int toolType = NELKVUI;
  bool hasConnected = false;
  std::string log;  ///< all messages so far, one a line, ">" sent and "<" received
};

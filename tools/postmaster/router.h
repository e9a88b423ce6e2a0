#pragma once

#include "postmaster/account.h"
#include "postmaster/message.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace postmaster {

/// Names one connection for the router.
using ClientId = int;

/// What the Postmaster says about itself in its messages.
struct Identity {
  int pid = 0;
  int port = 0;
  std::string text;  ///< identification of 8000
};

/// Second integer of 8002.
enum class LeaveReason : int { kDisconnected = 1, kHungUp = 2, kDropped = 3 };

/// Fourth integer of 8001.
enum class DenyReason : int { kAlreadyConnected = 1, kUnknownTool = 2, kShuttingDown = 3 };

/// First integer of 13000.
enum class ShutdownReason : int { kUiLeft = 1, kSignal = 2, kNoUiComing = 3, kToolNotStarted = 4 };

/// One frame to write to one connection.
struct Delivery {
  ClientId client = 0;
  Message message;
  bool closeAfterwards = false;
};

/// What follows from one event: frames to write and, when the event was a frame that went no
/// further, why.
struct Routing {
  std::vector<Delivery> deliveries;
  std::string refusal;
  bool isNews = true;  ///< the refusal, to the user; a greeting before the window is there is none
};

/// The Postmaster's rules, free of sockets: which tool is connected under which type, who gets a
/// frame, and what the Postmaster itself answers. A connection is unknown to the router until its
/// 7000 was accepted, and again after its 7001.
///
/// The Postmaster's own messages:
/// - 8000: tool type, process id of the Postmaster, port number, count of connected tools with
///   the new one, identification.
/// - 8001: tool type, process id, port number, DenyReason.
/// - 8002: tool type that left, LeaveReason, its name.
/// - 11006: caption and text of a warning box, to the user interface.
/// - 13000: ShutdownReason, process id, port number, milliseconds until 13001.
class Router {
 public:
  explicit Router(Identity identity) : self(std::move(identity)) {}

  /// Somebody plays the tools of these types: they count as connected, but have no client.
  void playTools(std::set<int> types) { played = std::move(types); }

  /// A well-formed frame came from `client`.
  Routing frameCame(ClientId client, const Message& message);

  /// The connection of `client` is gone; `reason` goes to the other tools if it was connected.
  Routing connectionLost(ClientId client, LeaveReason reason);

  /// A message to the user interface, as soon as it is ready.
  Routing tellUser(Message message);
  /// The same for 11006.
  Routing warnUser(const std::string& caption, const std::string& text);

  /// 2001 to the user interface in the tester's place; its user answers with OK or Cancel.
  Routing askUser(const std::string& caption, const std::string& text);
  /// The answer to askUser, once.
  std::optional<bool> takeAnswer() { return account.takeAnswer(); }

  /// Whether a tester is on its way: commands without one wait for it. Otherwise they go back to
  /// the user, to the log and to the list of commands, from where he can send them again.
  Routing awaitTester(bool comes);

  /// 13000 to every connected tool. From now on connection requests are denied.
  Routing shutDown(ShutdownReason reason, int graceMilliseconds);

  /// 13001 to the connected tools that did not answer 13000, or to all.
  enum class Targets { kSilent, kAll };
  Routing shutDownNow(Targets targets) const;

  /// Whether every tool that is still connected has answered 13000.
  bool allAnswered() const;

  /// Whether a user interface was connected and is so no more.
  bool uiHasLeft() const { return uiGone; }
  bool uiIsConnected() const { return clientOf(kUi) != nullptr; }

  /// Tool type of a connected client; 0 for others.
  int toolTypeOf(ClientId client) const;

 private:
  struct Tool {
    int type = 0;
    bool answered = false;  ///< 7002 came
    bool ready = false;     ///< 9001 came
  };

  static const int kUi;

  const ClientId* clientOf(int toolType) const;
  Routing commandWithoutTester(ClientId client, const Message& message);
  void giveBack(const Message& command, const char* why, Routing& routing) const;
  bool isThere(int toolType) const;
  std::string reasonToRefuse(const Tool& tool, const FrameHeader& header) const;
  Routing connect(ClientId client, const FrameHeader& header);
  Routing deny(ClientId client, int toolType, DenyReason reason) const;
  Routing toPostmaster(ClientId client, const FrameHeader& header);
  Routing forward(ClientId client, const Message& message) const;
  Routing leave(ClientId client, LeaveReason reason);

  Identity self;
  std::map<ClientId, Tool> tools;
  Account account;
  bool testerComes = false;
  std::set<int> played;
  std::vector<Message> forUser;  ///< for a user interface that is not ready yet
  bool uiHasCome = false;
  bool uiGone = false;
  bool shuttingDown = false;
};

}  // namespace postmaster

#pragma once

#include "postmaster/charset.h"
#include "postmaster/client.h"
#include "postmaster/router.h"
#include "postmaster/witness.h"
#include "support/descriptor.h"

#include <poll.h>
#include <sys/types.h>

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace postmaster {

/// All connections: reads their frames, has them routed, writes what follows, shows both to the
/// witnesses. A client's fault costs one line and at most that client; the others go on.
class Switchboard {
 public:
  /// What is done for the window beside carrying its messages.
  struct WindowService {
    std::unique_ptr<Charset> charset;
    bool joinsTexts = false;
  };
  Switchboard(Identity identity, Complaints& complaintsOut, const Witnesses& witnessesOfAll,
              WindowService windowService);

  /// Takes in all connections that wait at `listener`.
  void acceptAll(int listener);

  /// Adds what to wait for.
  void appendPollEntries(std::vector<pollfd>& entries) const;

  /// Serves one entry that poll gave back. Entries of descriptors that are no client are ignored.
  void serve(const pollfd& entry);

  /// Reads to its end what the process `pid`, which has ended, left in its connection.
  void processEnded(pid_t pid);

  /// Tool type that the process `pid` is connected as; 0 when it is not.
  int toolTypeOf(pid_t pid) const;

  /// Whether the process `pid` has acknowledged 13000.
  bool hasAnswered(pid_t pid) const { return answeredProcesses.contains(pid); }

  /// Hands a message to the user interface, at once or when it is ready for it.
  void tellUser(const Message& message);

  /// From now on these tools are played by `play`.
  void playTools(std::set<int> types) { router.playTools(std::move(types)); }
  /// A message of theirs to the user interface.
  void play(const Message& message);
  /// Whether there is a user interface, and one that takes what it is sent.
  bool canPlay() const;

  /// Tells the user by a warning box of his interface, at once or when it is ready for it.
  void warnUser(const std::string& caption, const std::string& text);

  /// Asks the user by a question box of his interface; false when there is none that is ready.
  bool askUser(const std::string& caption, const std::string& text);
  std::optional<bool> takeAnswer() { return router.takeAnswer(); }
  /// As Router::awaitTester.
  void awaitTester(bool comes);

  /// Starts the end, with 13000 to all tools.
  void shutDown(ShutdownReason reason, int graceMilliseconds);
  /// Orders tools to end, with 13001; whether there were any.
  bool shutDownNow(Router::Targets targets);

  const Router& state() const { return router; }
  bool isEmpty() const { return clients.empty(); }

  /// Whether connections have gone since this was last asked.
  bool takeDepartures();

 private:
  void readFrom(Client& client);
  void readToEnd(Client& client);
  void takeFrames(Client& client);
  void takeFrame(Client& client, std::string text);
  void deliver(const std::vector<Delivery>& deliveries);
  void holdBack(Client& sender, const std::vector<Delivery>& deliveries);
  void releaseHeld();
  bool isStillSlow(ClientId id) const;
  void writeTo(Client& client, const Delivery& delivery);
  bool sendToWindow(Client& client, const Message& message);
  void hangUp(Client& client);
  void drop(Client& client, LeaveReason reason);
  void bury();
  void showToWitnesses(const Message& message, std::string_view refusal);
  std::string nameOf(const Client& client) const;

  Router router;
  Complaints& complaints;
  const Witnesses& witnesses;
  WindowService window;
  std::map<ClientId, std::unique_ptr<Client>> clients;
  std::set<pid_t> answeredProcesses;
  bool departures = false;
  bool ending = false;
};

}  // namespace postmaster

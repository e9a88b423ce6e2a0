#pragma once

#include "postmaster/router.h"
#include "postmaster/witness.h"
#include "support/descriptor.h"

#include <poll.h>
#include <sys/types.h>

#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace postmaster {

/// With more bytes than this waiting for a client that does not read, those that send to it are
/// not read either until the half of it is left.
inline constexpr std::size_t kHoldBytes = std::size_t{256} * 1024;

/// What may wait for a client all the same, as news of the Postmaster; one that lets more pile up
/// is dropped.
inline constexpr std::size_t kMaxQueuedBytes = std::size_t{4} * 1024 * 1024;

/// One connection: its non-blocking socket and what is on its way in and out.
class Client {
 public:
  explicit Client(UniqueDescriptor connected);

  int fd() const { return socket.get(); }
  pid_t pid() const { return peer; }  ///< process at the other end; 0 when unknown

  enum class ReadResult { kSome, kNothing, kEnd };
  /// Reads once, into `input`.
  ReadResult read();
  FrameSplitter& input() { return splitter; }

  /// Writes `text` or queues what the socket does not take now. False, with nothing queued, when
  /// the queue's bound would be passed.
  bool send(std::string_view text);

  /// Writes from the queue. False when the connection is broken.
  bool flush();
  bool hasQueued() const { return queuedBytes() > 0; }
  std::size_t queuedBytes() const { return queue.size() - sent; }

  /// Holds this client back: it is not read until the client `slow` has taken what waits for it.
  void holdFor(int slow) { heldFor = slow; }
  void release() { heldFor = kNotHeld; }
  bool isHeld() const { return heldFor != kNotHeld; }
  int slowOne() const { return heldFor; }

  /// The connection is to be closed once the queue is empty.
  void closeAfterFlush() { closing = true; }
  bool isClosing() const { return closing; }

  /// Whether this connection still belongs to the Postmaster's clients.
  bool isDead() const { return dead; }
  void markDead() { dead = true; }

 private:
  static constexpr int kNotHeld = -1;

  UniqueDescriptor socket;
  pid_t peer = 0;
  FrameSplitter splitter;
  std::string queue;
  std::size_t sent = 0;  ///< bytes at the queue's front that are written
  int heldFor = kNotHeld;
  bool closing = false;
  bool dead = false;
};

/// All connections: reads their frames, has them routed, writes what follows, shows both to the
/// witnesses. A client's fault costs one line and at most that client; the others go on.
class Switchboard {
 public:
  Switchboard(Identity identity, Complaints& complaintsOut, const Witnesses& witnessesOfAll);

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

  /// Tells the user by a warning box of his interface, at once or when it is ready for it.
  void warnUser(const std::string& caption, const std::string& text);

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
  void hangUp(Client& client);
  void drop(Client& client, LeaveReason reason);
  void bury();
  void showToWitnesses(const Envelope& message, std::string_view refusal);
  std::string nameOf(const Client& client) const;

  Router router;
  Complaints& complaints;
  const Witnesses& witnesses;
  std::map<ClientId, std::unique_ptr<Client>> clients;
  std::set<pid_t> answeredProcesses;
  bool departures = false;
  bool ending = false;
};

}  // namespace postmaster

#pragma once

#include "postmaster/message.h"
#include "support/descriptor.h"

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>

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

  /// Writes `message` or queues what the socket does not take now. False, with nothing queued, when
  /// the queue's bound would be passed.
  bool send(const Message& message);

  /// As send, but a text of the log that follows one of the same sender, of which nothing has left
  /// yet, becomes one message with it.
  bool sendJoined(const Message& message);

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
  void append(std::string_view text);

  std::string queue;
  std::size_t sent = 0;  ///< bytes at the queue's front that are written
  Message lastText;      ///< at the queue's end, if a text of the log stands there
  int heldFor = kNotHeld;
  bool closing = false;
  bool dead = false;
};

}  // namespace postmaster

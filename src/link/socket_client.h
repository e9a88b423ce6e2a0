#pragma once

#include <unistd.h>

#include "link/wire.h"

/// Values with which the link ends the process; the shell sees them modulo 256.
enum LinkExit : int {
  kExitLeft = 0,             ///< after a refusal or shutdown, on leaving
  kExitSecondClient = -100,  ///< a second socket client was made
  kExitStateError = -101,    ///< a system message came in a state that has none
  kExitShutdownNow = -102,   ///< the Postmaster asked for an immediate end
  kExitTimeout = -111,       ///< the Postmaster did not answer the connection request
};

/// Domain of the link's socket. Tools of this environment use the first only.
enum SocketDomain : int {
  kUnixDomain = 0,
  kInternetDomain = 1,
};

/// How long a read waits; any other value is a number of seconds.
enum SocketWait : int {
  kWaitBriefly = 0,  ///< 10 microseconds
  kWaitForever = 1,
};

/// Results of waiting, passed on by reading.
enum SocketWaitResult : int {
  kWaitTimedOut = -2,
  kWaitFailed = -3,
};

/// What a read would find.
enum class SocketInput {
  kNone,   ///< nothing
  kThere,  ///< a whole frame, or bytes on the socket
  kStuck,  ///< a frame that no read can take
};

/// The connection to the Postmaster, which must be this process's parent. A process makes one;
/// making a second ends it with exit status -100. Failures go to standard error as one line each,
/// nothing is retried, and the object stays usable: all further reads and sends then fail.
class SocketControlClient {
 public:
  /// Reads the port file and connects.
  SocketControlClient();

  /// Takes over a connected socket, which it does not close. Does not count as the process's one.
  explicit SocketControlClient(int connectedSocket);

  SocketControlClient(const SocketControlClient&) = delete;
  SocketControlClient& operator=(const SocketControlClient&) = delete;

  /// A new stream socket of the client's domain, or -1.
  int SockCreate() const;

  /// Connects `fd`; the result of connect.
  static int SockOpenCl(const int* domain, const char* host, int port, int fd);

  /// Closes `fd` and, in the Unix domain, removes the name of the Postmaster's socket. Returns
  /// -1 also when all went well: what counts is a shutdown of the closed descriptor.
  static int SockCloseCl(const int* domain, int fd, int port);

  /// Sends a frame in one call. Returns `length`, or -1 when that did not come off. The send that
  /// finds the connection broken says so; of those that find it broken already, and put nothing
  /// out, the first of the process does.
  int SockSend(int fd, const void* frame, int length);

  /// Stores one whole frame with its NUL in `out` and returns its length; 0 when there is none
  /// yet, also at the end of the stream; negative on failure. Frames that came in together are
  /// handed out one a call, without touching the socket. A frame longer than `capacity`, whole or
  /// not, stays in front and makes this and each later call return -1 without reading on. `out` is
  /// scratch space in any case.
  int SockRead(int fd, void* out, int capacity, int wait);

  /// What SockRead would find now, with the same `fd` and `capacity`. A stream that has ended can
  /// be read for ever; that is nothing.
  SocketInput pendingInput(int fd, int capacity);

  /// `fd` while waiting until it can be read makes sense: -1 once a read found the end of the
  /// stream or failed, and for a descriptor that is never seen ready.
  int awaitable(int fd) const;

  /// Waits until `fd` can be read: the count of ready descriptors or a SocketWaitResult.
  /// Descriptors from 32 on are never seen ready.
  static int SockWait(int fd, int wait);

  /// Removes the name of the Postmaster's socket.
  void unlinkSocketFile() const;

  /// The descriptor, negative without a connection.
  int descriptor() const { return socket; }
  int connectionResult() const { return connectResult; }
  bool isBroken() const { return broken; }

 private:
  bool isFrontTooLong(int capacity);
  int takeFrame(void* out, int capacity, const char* tooLongText);

  int domain = kUnixDomain;
  bool broken = false;  // a send found the connection broken
  bool ended = false;
  FrameBuffer buffer;
  int port = 0;
  int socket = -1;
  int connectResult = -1;
  int postmaster = getppid();  // a later parent is nobody's Postmaster
};

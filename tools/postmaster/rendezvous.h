#pragma once

#include "link/port_control.h"
#include "support/descriptor.h"

#include <sys/types.h>

#include <string>
#include <utility>

namespace postmaster {

/// The two names under which tools find a Postmaster: the port file and the listening socket,
/// "<prefix>PORTNUMBER" and "<prefix><port>.<pid of the Postmaster>". Only one Postmaster
/// can hold the port file of a folder. The names are removed with the object.
class Rendezvous {
 public:
  explicit Rendezvous(std::string pathPrefix = rendezvousPrefix());
  ~Rendezvous();
  Rendezvous(const Rendezvous&) = delete;
  Rendezvous& operator=(const Rendezvous&) = delete;

  /// Picks a number and makes both names. Returns an empty text, or why it failed; then nothing
  /// of this object is left behind.
  std::string open();

  int listener() const { return socket.get(); }
  int port() const { return number; }

  /// Whether the socket's name is gone: every tool that leaves removes it.
  bool isNameLost() const;

  /// Listens anew under the name that was lost. What waits at the old listener must have been
  /// accepted before. Returns an empty text, or why it failed.
  std::string renew();

  /// Removes both names, as far as they are still this Postmaster's, and stops listening.
  void close();

 private:
  using FileIdentity = std::pair<dev_t, ino_t>;

  std::string listen();
  std::string publish();
  std::string clearStale();
  void removeSocketsOf(int stalePort) const;
  std::string socketPath() const;
  std::string portPath() const { return prefix + "PORTNUMBER"; }

  static bool identify(const std::string& path, FileIdentity& identity);
  static void removeIf(const std::string& path, const FileIdentity& identity);

  std::string prefix;
  UniqueDescriptor socket;
  UniqueDescriptor portFile;  ///< open and locked as long as this Postmaster lives
  int number = 0;
  FileIdentity socketIdentity{};
  FileIdentity portIdentity{};
};

}  // namespace postmaster

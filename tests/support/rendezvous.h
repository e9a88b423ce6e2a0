#pragma once

#include <string>

#include "tests/support/rendezvous_folder.h"
#include "tests/support/unique_descriptor.h"

/// The rendezvous of a Postmaster that is this process: its tools, children of this process, find
/// the port file and connect to the socket. In a folder of its own, gone with this object.
class Rendezvous {
 public:
  Rendezvous();
  Rendezvous(const Rendezvous&) = delete;
  Rendezvous& operator=(const Rendezvous&) = delete;
  ~Rendezvous();

  /// The listening socket, which does not block.
  int listener() const { return listening.get(); }
  /// The connection of the next tool that waits for one; closed when none does.
  UniqueDescriptor accept() const;
  const std::string& socketName() const { return socketPath; }

 private:
  void listen();
  void publishPort() const;

  RendezvousFolder folder;
  int port;
  std::string socketPath;
  UniqueDescriptor listening;
};

#pragma once

#include <string>

#include "tests/support/basics.h"

/// Keeps the rendezvous files of this process and its children in a folder of their own, so that no
/// other run on the machine meets them. One at a time in a process.
class RendezvousFolder {
 public:
  RendezvousFolder() { ::setenv("NEL_RENDEZVOUS_DIR", folder.path().c_str(), 1); }
  RendezvousFolder(const RendezvousFolder&) = delete;
  RendezvousFolder& operator=(const RendezvousFolder&) = delete;
  ~RendezvousFolder() { ::unsetenv("NEL_RENDEZVOUS_DIR"); }

 private:
  TemporaryFolder folder;
};

/// The rendezvous of a Postmaster that is this process: its tools, children of this process, find
/// the port file and connect to the socket. In a folder of its own, gone with this object.
class Rendezvous {
 public:
  Rendezvous();

  /// The listening socket, which does not block.
  int listener() const { return listening.get(); }
  /// The connection of the next tool that waits for one; closed when none does.
  UniqueDescriptor accept() const;
  const std::string& socketName() const { return socketPath; }

 private:
  static constexpr int kPort = 4711;

  RendezvousFolder folder;
  std::string socketPath;
  UniqueDescriptor listening;
};

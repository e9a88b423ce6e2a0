#pragma once

#include <string>

#include "tests/support/unique_descriptor.h"

/// The machine-wide meeting point of a Postmaster and its tools.
inline const std::string kRendezvousPrefix = "/tmp/.nel.tessil.";
inline const std::string kPortFile = kRendezvousPrefix + "PORTNUMBER";
inline const std::string kRendezvousLockFile = kRendezvousPrefix + "lock";

/// Held by a test while it uses the rendezvous files: waits until no other test of the machine
/// does, and clears away what dead Postmasters left there. A lock that this process inherited
/// (`flock /tmp/.nel.tessil.lock PROGRAM`) counts.
class RendezvousLock {
 public:
  RendezvousLock();

 private:
  UniqueDescriptor lock;
};

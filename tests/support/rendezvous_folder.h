#pragma once

#include "tests/support/temporary_folder.h"

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

#pragma once

/// Values with which the link ends the process; the shell sees them modulo 256.
enum LinkExit : int {
  kExitLeft = 0,             ///< after a refusal or shutdown, on leaving
  kExitSecondClient = -100,  ///< a second socket client was made
  kExitStateError = -101,    ///< a system message came in a state that has none
  kExitShutdownNow = -102,   ///< the Postmaster asked for an immediate end
  kExitTimeout = -111,       ///< the Postmaster did not answer the connection request
};

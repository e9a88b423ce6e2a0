#pragma once

#include <string>

/// What a test may set otherwise than the product, before ToolInit. Programs leave it alone.
struct LinkSettings {
  std::string rendezvousPrefix = "/tmp/.nel.tessil.";  ///< start of all rendezvous file names
  int handshakeSeconds = 20;  ///< how long ToolInit waits for the Postmaster's answer
};

LinkSettings& linkSettings();

#pragma once

/// What a test may set otherwise than the product, before ToolInit. Programs leave it alone.
struct LinkSettings {
  int handshakeSeconds = 20;  ///< how long ToolInit waits for the Postmaster's answer
};

LinkSettings& linkSettings();

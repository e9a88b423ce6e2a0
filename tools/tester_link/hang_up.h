#pragma once

namespace tester_link {

/// Whether the Postmaster has closed the connection and nothing of it is left to read. The link's
/// reader takes the end of the stream for silence.
bool hasHungUp();

}  // namespace tester_link

#pragma once

#include <cstdlib>
#include <string>

/// Names of the rendezvous files, and the port number that the Postmaster left in one of them. The
/// link is a Unix-domain socket; the "port" is no more than a part of its file name.

/// Start of all rendezvous file names: ".nel.tessil." in `folder`, or in /tmp when that is null or
/// empty. All tools of a session and their Postmaster must have the same folder.
std::string rendezvousPrefix(const char* folder = std::getenv("NEL_RENDEZVOUS_DIR"));

/// Name of the file that holds the port number in decimal, written with "%d\n".
std::string portFileName();

/// Name of the socket on which the Postmaster with the process id `postmaster` listens.
std::string socketFileName(int port, int postmaster);

class PortControlClient {
 public:
  /// Reads the port file. When it cannot be opened, says so on standard error.
  PortControlClient();

  /// The port number, 0 when unknown; says so on standard error then.
  int GetPortNumberClient() const;

 private:
  int port = 0;
};

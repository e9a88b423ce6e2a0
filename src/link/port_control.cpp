// Where the Postmaster listens.

#include "link/port_control.h"

#include <unistd.h>
#include <cstdio>

#include "support/descriptor.h"

std::string rendezvousPrefix(const char* folder) {
  const bool isChosen = folder != nullptr && *folder != '\0';
  return std::string(isChosen ? folder : "/tmp") + "/.nel.tessil.";
}

std::string portFileName() {
  return rendezvousPrefix() + "PORTNUMBER";
}

std::string socketFileName(int port, int postmaster) {
  return rendezvousPrefix() + std::to_string(port) + "." + std::to_string(postmaster);
}

PortControlClient::PortControlClient() {
  const std::string name = portFileName();
  const UniqueFile file(std::fopen(name.c_str(), "rb"));
  if (file == nullptr) {
    std::fprintf(stderr,
                 "PROCESS(PID=%d):**ERR:Cannot connect to Tessil Postmaster due to missing port. "
                 "File %s\n",
                 static_cast<int>(getpid()), name.c_str());
    return;
  }
  if (std::fscanf(file.get(), "%d\n", &port) != 1) {
    port = 0;
  }
}

int PortControlClient::GetPortNumberClient() const {
  if (port == 0) {
    std::fputs("**ERR: PortControlClient::GetPortNumberClient:Clients portnumber not found!!\n",
               stderr);
  }
  return port;
}

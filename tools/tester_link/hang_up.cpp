#include "tester_link/hang_up.h"

#include <sys/socket.h>

#include <cerrno>

#include "link/tool_interface.h"

namespace tester_link {

bool hasHungUp() {
  char byte = 0;
  const ssize_t count = recv(g_ToolSocket, &byte, sizeof byte, MSG_PEEK | MSG_DONTWAIT);
  return count == 0 || (count < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR);
}

}  // namespace tester_link

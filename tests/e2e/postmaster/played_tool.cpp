#include "tests/e2e/postmaster/played_tool.h"

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "link/message_numbers.h"
#include "link/port_control.h"
#include "tests/e2e/postmaster/nelmpm_process.h"
#include "tests/e2e/postmaster/test_client.h"

namespace {

constexpr int kArguments = 4;

int obey(TestClient& client, int toolType) {
  while (const auto message = client.receive()) {
    if (message->header.tag == MSG_SHUTDOWN) {
      client.directed(toolType, NELMPM, MSG_SHUTDOWN_ACK);
      return EXIT_SUCCESS;
    }
  }
  return EXIT_FAILURE;
}

}  // namespace

std::string playedTool(int toolType, ToolManner manner) {
  const std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
  return "'" + self + "' " + std::string(kPlayTool) + " " + std::to_string(toolType) + " " +
         std::to_string(static_cast<int>(manner));
}

int playTool(int argc, char** argv) {
  if (argc != kArguments) {
    return EXIT_FAILURE;
  }
  const int toolType = std::atoi(argv[2]);
  TestClient client(socketFileName(publishedPort(), getppid()));
  if (client.connectAs(toolType) != MSG_CONNECT_OK) {
    return EXIT_FAILURE;
  }
  switch (static_cast<ToolManner>(std::atoi(argv[3]))) {
    case ToolManner::kObedient:
      return obey(client, toolType);
    case ToolManner::kDeciding:
      obey(client, toolType);
      return pause();
    case ToolManner::kCrashing:
      client.receive();
      return raise(SIGKILL);
    case ToolManner::kDeaf:
      std::signal(SIGTERM, SIG_IGN);
      client.broadcast(toolType, MSG_TOOL_ACTIVE);
      while (true) {
        pause();
      }
  }
  return EXIT_FAILURE;
}

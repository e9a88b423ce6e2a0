// As "--play-tool" the program is a tool that a Postmaster starts.
#include <gmock/gmock.h>
#include <unistd.h>

#include <string_view>

#include "tests/e2e/postmaster/played_tool.h"
#include "tests/support/rendezvous.h"

int main(int argc, char** argv) {
  if (argc > 1 && std::string_view(argv[1]) == kPlayTool) {
    return playTool(argc, argv);
  }
  testing::InitGoogleMock(&argc, argv);
  // What this program inherited must not reach the programs under test.
  ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
  const RendezvousFolder folder;
  return RUN_ALL_TESTS();
}

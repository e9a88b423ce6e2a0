#include <array>
#include <cstdio>
#include <cstdlib>

#include "framework/core/debug_out.h"
#include "framework/core/x_error_xm.h"

int XErrorReporter(Display* display, XErrorEvent* event) {
  constexpr int kTextLimit = 100;
  std::array<char, kTextLimit> text = {};
  XGetErrorText(display, event->error_code, text.data(), kTextLimit);
  zDebugOut("X Error of failed request: %s", text.data());
  zDebugOut("Opcode of failed request: %d, %d", event->request_code, event->minor_code);
  zDebugOut("Resource id in failed request: %d", static_cast<int>(event->resourceid));
  zDebugOut("Serial number of failed request: %d\n", static_cast<int>(event->serial));
  return 1;
}

void reportXtWarning(char* message) {
  zDebugOut("%s", message);
}

void reportXtError(char* message) {
  zDebugOut("%s", message);
  std::fflush(stdout);
  std::fprintf(stderr, "Error: %s\n", message);
  std::exit(EXIT_FAILURE);
}

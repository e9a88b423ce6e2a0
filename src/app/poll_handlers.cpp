#include "app/poll_handlers.h"

#include <chrono>

#include "app/app_main.h"
#include "app/wmain.h"
#include "framework/core/application.h"
#include "framework/core/idle_list.h"
#include "framework/core/key_guard.h"
#include "framework/core/message_box.h"
#include "framework/core/window.h"
#include "link/tool_interface.h"
#include "textarea/text_pane.h"

int g_IdleCount = 0;

namespace {

constexpr int kSilentPolls = 100;
// After this time of idle polls in a row timers and other inputs get their turn.
constexpr std::chrono::milliseconds kIdleBurst{10};
constexpr char kLostCaption[] = "Korvane UI: NELMPM Error";

void leaveLostLink(zEvH* owner, const char* text) {
  const zUnaskedScope unasked;
  if (theTextPane != nullptr) {
    theTextPane->showHeld();
  }
  const zMessage box(windowCast<zWindow>(owner), text, kLostCaption, kBoxOk | kBoxPlain);
  g_MainWindow->endWithoutLink();
}

// False once the handler has given up.
bool pollIdly(zEvH* owner) {
  if (ToolReceive(kReceivePoll) == -1) {
    leaveLostLink(owner, "Connection to Tessil Postmaster lost.\n Application will quit. 1");
  }
  if (++g_IdleCount < kSilentPolls) {
    return true;
  }
  g_IdleList->remove(owner, PollLinkIdle);
  g_IdleCount = 0;
  return false;
}

zTimerPace linkPace() {
  switch (ToolInput()) {
    case SocketInput::kThere:
      return zTimerPace::kAtOnce;
    case SocketInput::kStuck:
      return zTimerPace::kPeriod;  // each poll reports it again
    default:
      return zTimerPace::kAsleep;
  }
}

}  // namespace

constexpr zTimerWatch g_LinkWatch{linkPace, ToolWakeDescriptors};

int PollLinkIdle(zEvH* owner) {
  zApp* app = zApp::instance();
  const auto end = std::chrono::steady_clock::now() + kIdleBurst;
  while (pollIdly(owner) && app->isRunning() && ToolHasInput() && !app->hasPendingEvent() &&
         std::chrono::steady_clock::now() < end) {
  }
  return 0;
}

int PollLinkTimer(zEvH* owner) {
  if (ToolReceive(kReceivePoll) == -1) {
    leaveLostLink(owner, "Connection to Tessil Postmaster lost.\n Application will quit. 2");
  }
  return 0;
}

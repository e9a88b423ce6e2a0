#include "app/poll_handlers.h"

#include "app/app_main.h"
#include "app/wmain.h"
#include "framework/core/idle_list.h"
#include "framework/core/key_guard.h"
#include "framework/core/message_box.h"
#include "framework/core/window.h"
#include "link/tool_interface.h"

int g_IdleCount = 0;

namespace {

constexpr int kSilentPolls = 100;
constexpr char kLostCaption[] = "Korvane UI: NELMPM Error";

void leaveLostLink(zEvH* owner, const char* text) {
  const zUnaskedScope unasked;
  const zMessage box(windowCast<zWindow>(owner), text, kLostCaption, kBoxOk | kBoxPlain);
  g_MainWindow->endWithoutLink();
}

}  // namespace

int PollLinkIdle(zEvH* owner) {
  if (ToolReceive(kReceivePoll) == -1) {
    leaveLostLink(owner, "Connection to Tessil Postmaster lost.\n Application will quit. 1");
  }
  if (++g_IdleCount >= kSilentPolls) {
    g_IdleList->remove(owner, PollLinkIdle);
    g_IdleCount = 0;
  }
  return 0;
}

int PollLinkTimer(zEvH* owner) {
  if (ToolReceive(kReceivePoll) == -1) {
    leaveLostLink(owner, "Connection to Tessil Postmaster lost.\n Application will quit. 2");
  }
  return 0;
}

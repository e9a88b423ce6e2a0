// The roads out of the program. All meet in canExit, close, ToolExit and zApp::quit.

#include "app/wmain.h"
#include "buttons/group_pane.h"
#include "framework/core/application.h"
#include "framework/core/modal_shell.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "textarea/ret_edit_line.h"

int g_ExitConfirmed = 0;

int WMain::canExit() {
  if (g_ExitConfirmed != 0) {
    return g_ExitConfirmed;
  }
  if (isAskingToExit) {
    // The question is on the screen already; its answer decides for the first who asked.
    ziModalShell::raiseNewest();
    return 0;
  }
  const ziAlive alive(this);
  isAskingToExit = true;
  do {
    g_ExitConfirmed = theGroupPane->queryExit();
  } while (g_ExitConfirmed == 0 && alive && hasNoLink && zApp::instance()->isRunning());
  if (alive) {
    isAskingToExit = false;
  }
  return g_ExitConfirmed;
}

// Asked before the link is left, which may end the process. Where the question is up already, the
// end follows its answer.
void WMain::endWithoutLink() {
  hasNoLink = true;
  onExit(nullptr);
}

int WMain::close(zEvent* /*event*/) {
  if (canExit() == 0) {
    return 1;
  }
  ToolSend(NELKV, MSG_UI_EXIT, nullptr, 0);
  ToolExit(NELKVUI);
  theCommandLine->startFocusTimer();
  return 0;
}

// The link is left first, so that close, which quit asks, has nobody left to tell: no 1007 is sent.
int WMain::onExit(zEvent* /*event*/) {
  if (canExit() != 0) {
    ToolExit(NELKVUI);
    zApp::instance()->quit();
  }
  return 0;
}

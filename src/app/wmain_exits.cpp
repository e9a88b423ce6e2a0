// The roads out of the program. All meet in canExit, close, ToolExit and zApp::quit.

#include "app/wmain.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "textarea/ret_edit_line.h"

int g_ExitConfirmed = 0;

int WMain::canExit() {
  g_ExitConfirmed = 1;
  return 1;
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

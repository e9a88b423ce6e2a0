#include "app/app_main.h"

#include <cstdio>
#include <utility>

#include "app/message_handler.h"
#include "app/wmain.h"
#include "dialogs/dabout.h"
#include "framework/controls/control.h"
#include "framework/core/application.h"
#include "framework/core/interfaces.h"
#include "framework/core/message_box.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "session/session.h"

namespace {

constexpr char kAppName[] = "nelkvui";
constexpr char kUsage[] =
    "Usage:\n\t-h\t\tthis help page\n\t-v\t\tprint Version Information\n\t-t<targetdir>\tuse "
    "targetdirectory\n\t-post\tconnect to NEL-Postmaster at startup\n";

void registerControls() {
  registerRecordControls();
  for (const char* name : {"zCheckBox3dClass", "zRadioBtn3dClass", "zStatTxt3dClass",
                           "zGroupBox3dClass", "zBmpBtnClass", "zPanel3dClass", "zTable",
                           "zTablePrintable", "zValueSet", "zTreeCtrl", "zProgressBar"}) {
    registerControlClass(name);
  }
}

/// True when the options ask for a text only, which is then printed. -v goes before -h.
bool printWhatIsAskedFor(CommandLineOptions& options) {
  if (options.hasOptionChar('v') != 0) {
    PrintVersion();
    return true;
  }
  if (options.hasOptionChar('h') != 0) {
    std::printf("\n%s\n%s\n", g_AppTitle, kUsage);
    return true;
  }
  return false;
}

/// Keeps the window alive between two polls; false once the user has closed it.
bool serveWindow(int socket) {
  constexpr int kLongestSleepMs = 20;
  zApp* app = zApp::instance();
  app->pumpPending(socket, kLongestSleepMs);
  return app->isRunning();
}

void bringUpLink(WMain& mainWindow) {
  setWaitHook(serveWindow);
  mainWindow.showStatus("Waiting for the Postmaster ...");
  const bool isConnected = ToolInit(NELKVUI) == 0;
  mainWindow.showStatus("");
  if (isConnected) {
    ToolBroadcast(MSG_TOOL_READY, nullptr, 0);
  } else if (zApp::instance()->isRunning()) {
    const zMessage box(&mainWindow, "Connection to MPM denied", "Korvane UI: INFO",
                       kBoxStop | kBoxOk);
    mainWindow.endWithoutLink();
  }
}

void runMainWindow(zApp& app, Session& session) {
  // The program holds no string resources, so the initial title is empty; the window sets its own.
  WMain mainWindow(nullptr, "", session);
  serveMessages(session);
  bringUpLink(mainWindow);
  g_IdleList = app.idleList();
  g_IdleList->add(&mainWindow, PollLinkIdle);
  app.go();
  delete std::exchange(g_PollTimer, nullptr);
  g_IdleList->remove(&mainWindow, PollLinkIdle);
}

}  // namespace

void appMain(zApp* app) {
  Session& session = theSession;
  session = Session();
  app->setName(kAppName);
  registerControls();
  CommandLineOptions& options = CommandLineOptions::instance(app->commandLine());
  if (printWhatIsAskedFor(options)) {
    return;
  }
  options.getOptionValue('t', session.targetDir);
  session.postOption = options.hasOption("post");
  runMainWindow(*app, session);
}

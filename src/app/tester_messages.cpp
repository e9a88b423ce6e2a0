// One function a message, and the table from number to function.

#include "app/tester_messages.h"

#include <cstring>
#include <string>
#include <string_view>

#include <unistd.h>

#include "app/app_main.h"
#include "app/message_handler.h"
#include "app/tester_questions.h"
#include "app/wmain.h"
#include "buttons/group_pane.h"
#include "framework/core/application.h"
#include "framework/core/message_box.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "link/tool_message.h"
#include "link/typed_senders.h"
#include "textarea/command_queue.h"
#include "textarea/ret_edit_line.h"
#include "textarea/text_pane.h"

int g_TesterBusy = 0;

namespace {

constexpr std::string_view kPageFileCaption = "Korvane - Page file";

void answer(int tag) {
  ToolSend(NELKV, tag, nullptr, 0);
}

void leaveProgram() {
  ToolExit(NELKVUI);
  zApp::instance()->quit();
}

int showBox(const ToolMessage& message, int style) {
  return zMessage(g_MainWindow, message.text(1), message.text(0), style).result;
}

void onText(const ToolMessage& message) {
  // The poll that takes the next message is sure to follow.
  if (ToolHasInput()) {
    theTextPane->holdText(message.text(0));
  } else {
    theTextPane->appendText(message.text(0));
  }
  outputSinceCommand = true;
}

void onQuestion(const ToolMessage& message) {
  const int icon = message.text(0) == kPageFileCaption ? kBoxQuestion : kBoxStop;
  answer(showBox(message, icon | kBoxOkCancel) == kAnswerOk ? MSG_UI_OK : MSG_UI_NOT_OK);
}

void onPrompt(const ToolMessage& message) {
  theCommandLine->addToHistory(message.text(0));
  releaseCommandQueue();
}

void onExitConfirm(const ToolMessage& /*message*/) {
  if (g_MainWindow->canExit() == 1) {
    leaveProgram();
  }
}

void onExit(const ToolMessage& /*message*/) {
  leaveProgram();
}

void onTitle(const ToolMessage& message) {
  g_MainWindow->setCaption((std::string(g_AppTitle) + " - " + message.text(0)).c_str());
}

void onSystemOpened(const ToolMessage& message) {
  g_SymbolName = message.text(1);
  // A directory that cannot be entered leaves the program where it is, without a word. Intended.
  static_cast<void>(!chdir(message.text(0)));
  loadDefaultButtons(message.text(0));
}

void onErrorBox(const ToolMessage& message) {
  showBox(message, kBoxStop | kBoxOk);
  answer(MSG_UI_ACK);
}

void onBusy(const ToolMessage& /*message*/) {
  g_TesterBusy = 1;
}
void onIdle(const ToolMessage& /*message*/) {
  g_TesterBusy = 0;
}
void onWarningBox(const ToolMessage& message) {
  showBox(message, kBoxWarning | kBoxOk);
}
void onConnectOk(const ToolMessage& message) {
  g_Identification3 = message.text(4);
}
void onLinkIdent(const ToolMessage& message) {
  g_Identification2 = message.text(0);
}

struct Row {
  int tag;
  TesterMessageFunction function;
};

constexpr Row kRows[] = {
    {MSG_T_TEXT, onText},
    {MSG_T_QUESTION, onQuestion},
    {MSG_T_PROMPT, onPrompt},
    {MSG_T_ASK_STRING, askString},
    {MSG_T_ASK_INTEGER, askInteger},
    {MSG_T_ASK_LIST, askList},
    {MSG_T_EXIT_CONFIRM, onExitConfirm},
    {MSG_T_EXIT, onExit},
    {MSG_T_TITLE, onTitle},
    {MSG_T_ASK_FILE, askFile},
    {MSG_T_ASK_BITS, askBits},
    {MSG_T_ASK_DIRECTORY, askDirectory},
    {MSG_T_SYSTEM_OPENED, onSystemOpened},
    {MSG_T_ERROR_BOX, onErrorBox},
    {MSG_T_BUSY, onBusy},
    {MSG_T_IDLE, onIdle},
    {MSG_T_WARNING_BOX, onWarningBox},
    {MSG_T_FIND, askFind},
    {MSG_T_ASK_SIGNAL_PARAM, askSignalParameters},
    {MSG_T_ASK_RANGE, askRange},
    {MSG_CONNECT_OK, onConnectOk},
    {MSG_LINK_IDENT, onLinkIdent},
    {MSG_LINK_WARNING_BOX, onWarningBox},
};

}  // namespace

TesterMessageFunction testerMessageFunction(int tag) {
  for (const Row& row : kRows) {
    if (row.tag == tag) {
      return row.function;
    }
  }
  return nullptr;
}

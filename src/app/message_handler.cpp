// Polls of the link, the decoding of messages, and the table that says what is done on each.

#include "app/message_handler.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

#include <unistd.h>

#include "app/wmain.h"
#include "buttons/group_pane.h"
#include "framework/core/application.h"
#include "framework/core/message_box.h"
#include "framework/core/modal_shell.h"
#include "framework/core/timer.h"
#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "session/session.h"
#include "textarea/command_queue.h"
#include "textarea/my_pane.h"
#include "textarea/text_pane.h"

zTimer* g_PollTimer = nullptr;
zIdleList* g_IdleList = nullptr;

namespace {

constexpr unsigned long kPollPeriodMs = 10;
// After this time of idle polls in a row timers and other inputs get their turn.
constexpr std::chrono::milliseconds kIdleBurst{10};
constexpr std::string_view kPageFileCaption = "Korvane - Page file";

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

// The session that the messages are about.
Session* served = nullptr;

/// Has the poll timer fire at once while there is input, and sleep while there is none.
constexpr zTimerWatch kLinkWatch{linkPace, ToolWakeDescriptors};

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

void onNothing(Session& /*session*/, const ToolMessage& /*message*/) {}

void onStartPollTimer(Session& /*session*/, const ToolMessage& /*message*/) {
  // A second one makes a second timer, and the pointer to the first is lost. Intended.
  g_PollTimer = new zTimer(g_MainWindow, PollLinkTimer, kPollPeriodMs, kLinkWatch);
}

void onShutdown(Session& /*session*/, const ToolMessage& /*message*/) {
  // Kept by the link in practice; the answer is the same here.
  ToolSend(NELMPM, MSG_SHUTDOWN_ACK, nullptr, 0);
  zApp::instance()->quit();
}

void onText(Session& session, const ToolMessage& message) {
  // The poll that takes the next message is sure to follow.
  if (ToolHasInput()) {
    theTextPane->holdText(message.text(0));
  } else {
    theTextPane->appendText(message.text(0));
  }
  session.outputSinceCommand = true;
}

void onQuestion(Session& /*session*/, const ToolMessage& message) {
  const int icon = message.text(0) == kPageFileCaption ? kBoxQuestion : kBoxStop;
  answer(showBox(message, icon | kBoxOkCancel) == kAnswerOk ? MSG_UI_OK : MSG_UI_NOT_OK);
}

void onPrompt(Session& /*session*/, const ToolMessage& message) {
  theCommandLine->addToHistory(message.text(0));
  releaseCommandQueue();
}

void onExitConfirm(Session& /*session*/, const ToolMessage& /*message*/) {
  if (g_MainWindow->canExit() == 1) {
    leaveProgram();
  }
}

void onExit(Session& /*session*/, const ToolMessage& /*message*/) {
  leaveProgram();
}

void onTitle(Session& session, const ToolMessage& message) {
  g_MainWindow->setCaption(session.windowTitle(message.text(0)).c_str());
}

void onSystemOpened(Session& session, const ToolMessage& message) {
  session.symbolName = message.text(1);
  // A directory that cannot be entered leaves the program where it is, without a word. Intended.
  static_cast<void>(!chdir(message.text(0)));
  loadDefaultButtons(message.text(0));
}

void onErrorBox(Session& /*session*/, const ToolMessage& message) {
  showBox(message, kBoxStop | kBoxOk);
  answer(MSG_UI_ACK);
}

void onBusy(Session& session, const ToolMessage& /*message*/) {
  session.testerBusy = 1;
}

void onIdle(Session& session, const ToolMessage& /*message*/) {
  session.testerBusy = 0;
}

void onWarningBox(Session& /*session*/, const ToolMessage& message) {
  showBox(message, kBoxWarning | kBoxOk);
}

void onConnectOk(Session& session, const ToolMessage& message) {
  session.identification3 = message.text(4);
}

void onLinkIdent(Session& session, const ToolMessage& message) {
  session.identification2 = message.text(0);
}

/// How a message comes to its function.
enum class Form {
  kBare,    ///< by its number alone: it is not decoded
  kSilent,  ///< decoded; texts that the log holds back may still follow
  kSeen,    ///< decoded; the user finds in the log what came before it
};

struct ActionRow {
  int tag;
  Form form;
  void (*run)(Session& session, const ToolMessage& message);
};

constexpr ActionRow kMessages[] = {
    {MSG_TOOL_STARTED, Form::kBare, onNothing},
    {MSG_TOOL_READY, Form::kBare, onNothing},
    {MSG_TOOL_ACTIVE, Form::kBare, onNothing},
    {MSG_START_POLL_TIMER, Form::kBare, onStartPollTimer},
    {MSG_SHUTDOWN, Form::kBare, onShutdown},
    {MSG_T_TEXT, Form::kSilent, onText},
    {MSG_T_QUESTION, Form::kSeen, onQuestion},
    {MSG_T_PROMPT, Form::kSilent, onPrompt},
    {MSG_T_ASK_STRING, Form::kSeen, askString},
    {MSG_T_ASK_INTEGER, Form::kSeen, askInteger},
    {MSG_T_ASK_LIST, Form::kSeen, askList},
    {MSG_T_EXIT_CONFIRM, Form::kSeen, onExitConfirm},
    {MSG_T_EXIT, Form::kSeen, onExit},
    {MSG_T_TITLE, Form::kSeen, onTitle},
    {MSG_T_ASK_FILE, Form::kSeen, askFile},
    {MSG_T_ASK_BITS, Form::kSeen, askBits},
    {MSG_T_ASK_DIRECTORY, Form::kSeen, askDirectory},
    {MSG_T_SYSTEM_OPENED, Form::kSeen, onSystemOpened},
    {MSG_T_ERROR_BOX, Form::kSeen, onErrorBox},
    {MSG_T_BUSY, Form::kSilent, onBusy},
    {MSG_T_IDLE, Form::kSilent, onIdle},
    {MSG_T_WARNING_BOX, Form::kSeen, onWarningBox},
    {MSG_T_FIND, Form::kSeen, askFind},
    {MSG_T_ASK_SIGNAL_PARAM, Form::kSeen, askSignalParameters},
    {MSG_T_ASK_RANGE, Form::kSeen, askRange},
    {MSG_CONNECT_OK, Form::kSeen, onConnectOk},
    {MSG_LINK_IDENT, Form::kSeen, onLinkIdent},
    {MSG_LINK_WARNING_BOX, Form::kSeen, onWarningBox},
};

/// The row of a message; null for a number that nothing is done on.
const ActionRow* rowOf(int tag) {
  const auto* row = std::ranges::find(kMessages, tag, &ActionRow::tag);
  return row == std::end(kMessages) ? nullptr : row;
}

void leaveLostLink(zEvH* owner, const char* text) {
  const zUnaskedScope unasked;
  if (theTextPane != nullptr) {
    theTextPane->showHeld();
  }
  const zMessage box(windowCast<zWindow>(owner), text, "Korvane UI: NELMPM Error",
                     kBoxOk | kBoxPlain);
  g_MainWindow->endWithoutLink();
}

// False once the handler has given up.
bool pollIdly(zEvH* owner) {
  if (ToolReceive(kReceivePoll) == -1) {
    leaveLostLink(owner, "Connection to Tessil Postmaster lost.\n Application will quit. 1");
  }
  if (!served->hasPolledInVain()) {
    return true;
  }
  g_IdleList->remove(owner, PollLinkIdle);
  return false;
}

}  // namespace

void serveMessages(Session& session) {
  served = &session;
  setMessageHandler(MessageHandler);
}

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

std::string decodeErrorText(int result, int tag, int length) {
  const std::string number = std::to_string(tag);
  switch (result) {
    case kDecodeNoMemory:
      return "Decode Memory Error: Tag " + number;
    case kDecodeLengthWrong:
      return "Decode Error in message length:\nTag " + number + "\nLength " +
             std::to_string(length);
    case kDecodeNoMethod:
      return "Decode Error: No method for tag " + number;
    case kDecodeFailed:
      return "Decode Error: Tag " + number;
    default:
      return {};
  }
}

void MessageHandler(int /*sender*/, int tag, int length, const char* payload) {
  served->idleCount = 0;
  // What the idle handler has read beyond this message no descriptor tells any more; and no idle
  // handler runs in a nested loop that it starts.
  if (g_PollTimer != nullptr) {
    g_PollTimer->lookAgain();
  }
  const zUnaskedScope unasked;
  const ActionRow* row = rowOf(tag);
  if (row != nullptr && row->form == Form::kBare) {
    row->run(*served, {});
    return;
  }
  if ((row == nullptr || row->form == Form::kSeen) && theTextPane != nullptr) {
    theTextPane->showHeld();
  }
  ToolMessage decoded;
  const std::string error =
      decodeErrorText(DecodeMessage(tag, payload, length, &decoded), tag, length);
  if (!error.empty()) {
    const zMessage box(g_MainWindow, error.c_str(), served->appTitle.data(),
                       kBoxInformation | kBoxOk);
    return;
  }
  if (row != nullptr) {
    PROCESS_MESSAGE(tag, decoded);
  }
  FreeMessage(tag, &decoded);
}

int PROCESS_MESSAGE(int tag, ToolMessage message) {
  const ActionRow* row = rowOf(tag);
  if (row != nullptr && row->form != Form::kBare) {
    row->run(*served, message);
  } else {
    std::printf("PROCESS_MESSAGE: %d", tag);
  }
  return 0;
}

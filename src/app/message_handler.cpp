// Decoding of messages and the table that says which function carries each one out.

#include "app/message_handler.h"

#include <array>
#include <cstdio>
#include <span>

#include "app/app_main.h"
#include "app/poll_handlers.h"
#include "app/tester_messages.h"
#include "app/wmain.h"
#include "framework/core/application.h"
#include "framework/core/key_guard.h"
#include "framework/core/message_box.h"
#include "framework/core/timer.h"
#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "textarea/text_pane.h"

zTimer* g_PollTimer = nullptr;

namespace {

constexpr unsigned long kPollPeriodMs = 10;
constexpr int kDecodeErrorStyle = kBoxInformation | kBoxOk;

/// Tool status needs no decoding. True when `tag` was one of these.
bool handleStatus(int tag) {
  switch (tag) {
    case MSG_TOOL_STARTED:
    case MSG_TOOL_READY:
    case MSG_TOOL_ACTIVE:
      return true;
    case MSG_START_POLL_TIMER:
      // A second one makes a second timer, and the pointer to the first is lost. Intended.
      g_PollTimer = new zTimer(g_MainWindow, PollLinkTimer, kPollPeriodMs, g_LinkWatch);
      return true;
    case MSG_SHUTDOWN:
      // Kept by the link in practice; the answer is the same here.
      ToolSend(NELMPM, MSG_SHUTDOWN_ACK, nullptr, 0);
      zApp::instance()->quit();
      return true;
    default:
      return false;
  }
}

const char* decodeErrorFormat(int result) {
  switch (result) {
    case kDecodeNoMemory:
      return "Decode Memory Error: Tag %d";
    case kDecodeLengthWrong:
      return "Decode Error in message length:\nTag %d\nLength %d";
    case kDecodeNoMethod:
      return "Decode Error: No method for tag %d";
    case kDecodeFailed:
      return "Decode Error: Tag %d";
    default:
      return nullptr;
  }
}

/// Shows the box of a failed decoding; false when `result` is none.
bool reportDecodeError(int result, int tag, int length) {
  const char* format = decodeErrorFormat(result);
  if (format == nullptr) {
    return false;
  }
  std::array<char, 128> text{};
  std::snprintf(text.data(), text.size(), format, tag, length);
  const zMessage box(g_MainWindow, text.data(), g_AppTitle, kDecodeErrorStyle);
  return true;
}

bool isProcessed(int tag) {
  return tag == MSG_CONNECT_OK || tag == MSG_LINK_IDENT || tag == MSG_LINK_WARNING_BOX ||
         (tag >= MSG_T_TEXT && tag <= MSG_T_ASK_RANGE);
}

// A box or a dialog finds in the log what came before it.
void showLogBefore(int tag) {
  const bool isSeen =
      tag != MSG_T_TEXT && tag != MSG_T_PROMPT && tag != MSG_T_BUSY && tag != MSG_T_IDLE;
  if (isSeen && theTextPane != nullptr) {
    theTextPane->showHeld();
  }
}

}  // namespace

void MessageHandler(int /*sender*/, int tag, int length, const char* payload) {
  g_IdleCount = 0;
  const zUnaskedScope unasked;
  if (handleStatus(tag)) {
    return;
  }
  showLogBefore(tag);
  ToolMessage decoded;
  if (reportDecodeError(DecodeMessage(tag, payload, length, &decoded), tag, length)) {
    return;
  }
  if (isProcessed(tag)) {
    PROCESS_MESSAGE(tag, decoded);
  }
  FreeMessage(tag, &decoded);
}

int PROCESS_MESSAGE(int tag, ToolMessage message) {
  if (const TesterMessageFunction function = testerMessageFunction(tag); function != nullptr) {
    function(message);
  } else {
    std::printf("PROCESS_MESSAGE: %d", tag);
  }
  return 0;
}
